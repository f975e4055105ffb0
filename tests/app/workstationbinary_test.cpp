// The workstation program as a user starts it: in an empty home, on a bad
// archive path, with bad arguments, and rendering its window to a PNG.
#include <archivedb.h>

#include <SQLiteCpp/Statement.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct ProgramRun
{
    int exitCode = -1;
    QString out;
    QString err;
};

class WorkstationProgram : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_home.isValid());
        // An empty home of its own: nothing of the real user's is read or written.
        QDir(m_home.path()).mkpath(QStringLiteral("data"));
        QDir(m_home.path()).mkpath(QStringLiteral("runtime"));
        QFile::setPermissions(m_home.filePath(QStringLiteral("runtime")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    ProgramRun Start(const QStringList& args)
    {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("HOME"), m_home.path());
        env.insert(QStringLiteral("XDG_DATA_HOME"), m_home.filePath(QStringLiteral("data")));
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home.filePath(QStringLiteral("runtime")));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
        p.setProcessEnvironment(env);
        p.start(QStringLiteral(BRAVIK_WORKSTATION), args);
        EXPECT_TRUE(p.waitForStarted(30000));
        EXPECT_TRUE(p.waitForFinished(300000)) << "the workstation did not end";
        ProgramRun r;
        r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
        r.out = QString::fromLocal8Bit(p.readAllStandardOutput());
        r.err = QString::fromLocal8Bit(p.readAllStandardError());
        return r;
    }

    QString DefaultArchive() const
    {
        return m_home.filePath(QStringLiteral("data/Bravik/bravik-workstation/archive.sqlite"));
    }

    static long long Count(const QString& archive, const char* sql)
    {
        ArchiveDb db(archive.toStdString(), ArchiveDb::Mode::ReadOnly);
        SQLite::Statement q(db.Handle(), sql);
        q.executeStep();
        return q.getColumn(0).getInt64();
    }

    QTemporaryDir m_home;
};

// Distinct colours in a sample grid: a blank or single-colour image has one.
int Colours(const QImage& image)
{
    QSet<QRgb> seen;
    for (int y = 0; y < image.height(); y += 7)
        for (int x = 0; x < image.width(); x += 7)
            seen.insert(image.pixel(x, y));
    return seen.size();
}

TEST_F(WorkstationProgram, FirstStartInAnEmptyHomeCreatesAndFillsTheArchiveAndRendersTheWindow)
{
    const QString shot = m_home.filePath(QStringLiteral("window.png"));
    ASSERT_FALSE(QFile::exists(DefaultArchive()));

    const ProgramRun r = Start({"--demo-patients", "200", "--screenshot", shot});
    ASSERT_EQ(0, r.exitCode) << r.err.toStdString();

    // The archive: in the user's data folder, with the site and 200 patients
    // (plus their near-duplicates and linked records).
    ASSERT_TRUE(QFile::exists(DefaultArchive())) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("created ")));
    EXPECT_TRUE(r.err.contains(QStringLiteral("200 / 200 patients (100%)"))) << r.err.toStdString();
    EXPECT_GE(Count(DefaultArchive(), "SELECT COUNT(*) FROM patients"), 200);
    EXPECT_GT(Count(DefaultArchive(), "SELECT COUNT(*) FROM exams"), 0);
    EXPECT_GT(Count(DefaultArchive(), "SELECT COUNT(*) FROM organizations"), 0);

    // The picture: the window's size, and not blank.
    const QRegularExpression sizeLine(QStringLiteral("window.png (\\d+)x(\\d+)"));
    const auto m = sizeLine.match(r.out);
    ASSERT_TRUE(m.hasMatch()) << r.out.toStdString();
    QImage image;
    ASSERT_TRUE(image.load(shot));
    EXPECT_EQ(m.captured(1).toInt(), image.width());
    EXPECT_EQ(m.captured(2).toInt(), image.height());
    EXPECT_EQ(1180, image.width());
    EXPECT_EQ(760, image.height());
    EXPECT_GT(Colours(image), 20);
}

TEST_F(WorkstationProgram, SecondStartOpensTheArchiveWithoutFillingItAgain)
{
    const QString archive = m_home.filePath(QStringLiteral("site.sqlite"));
    const QString shot = m_home.filePath(QStringLiteral("s.png"));
    ASSERT_EQ(0, Start({"--archive", archive, "--demo-patients", "30", "--screenshot", shot}).exitCode);
    const long long patients = Count(archive, "SELECT COUNT(*) FROM patients");
    EXPECT_GE(patients, 30);

    const ProgramRun again = Start({"--archive", archive, "--demo-patients", "30", "--screenshot", shot});
    ASSERT_EQ(0, again.exitCode) << again.err.toStdString();
    EXPECT_FALSE(again.err.contains(QStringLiteral("created ")));
    EXPECT_EQ(patients, Count(archive, "SELECT COUNT(*) FROM patients"));
    // Nothing was written to the user's data folder.
    EXPECT_FALSE(QFile::exists(DefaultArchive()));
}

TEST_F(WorkstationProgram, ChosenUserLogsIn)
{
    const QString archive = m_home.filePath(QStringLiteral("site.sqlite"));
    const QString shot = m_home.filePath(QStringLiteral("s.png"));
    const ProgramRun r = Start({"--archive", archive, "--demo-patients", "5", "--user", "clerk", "--screenshot", shot});
    EXPECT_EQ(0, r.exitCode) << r.err.toStdString();
}

TEST_F(WorkstationProgram, UnknownUserIsRefused)
{
    const QString archive = m_home.filePath(QStringLiteral("site.sqlite"));
    const ProgramRun r = Start({"--archive", archive, "--demo-patients", "5", "--user", "nobody", "--screenshot",
                         m_home.filePath(QStringLiteral("s.png"))});
    EXPECT_EQ(1, r.exitCode);
    EXPECT_TRUE(r.err.contains(QStringLiteral("bravik-workstation: the archive '%1' has no user 'nobody'").arg(archive)))
        << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(m_home.filePath(QStringLiteral("s.png"))));
}

TEST_F(WorkstationProgram, ArchiveInAMissingFolder)
{
    const QString archive = m_home.filePath(QStringLiteral("no/such/folder/site.sqlite"));
    const ProgramRun r = Start({"--archive", archive});
    EXPECT_EQ(1, r.exitCode);
    EXPECT_TRUE(r.err.contains(QStringLiteral("bravik-workstation: cannot open archive '%1': the folder '%2' does "
                                              "not exist")
                                   .arg(archive, m_home.filePath(QStringLiteral("no/such/folder")))))
        << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(archive));
}

TEST_F(WorkstationProgram, ArchiveThatIsAFolder)
{
    const ProgramRun r = Start({"--archive", m_home.path()});
    EXPECT_EQ(1, r.exitCode);
    EXPECT_TRUE(r.err.contains(
        QStringLiteral("bravik-workstation: cannot open archive '%1': it is a folder, not a file").arg(m_home.path())))
        << r.err.toStdString();
}

TEST_F(WorkstationProgram, FileThatIsNotAnArchive)
{
    const QString path = m_home.filePath(QStringLiteral("notes.txt"));
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(QByteArray(4096, 'x'));
    f.close();
    const ProgramRun r = Start({"--archive", path});
    EXPECT_EQ(1, r.exitCode);
    EXPECT_TRUE(r.err.startsWith(QStringLiteral("bravik-workstation: cannot open archive '%1': ").arg(path)))
        << r.err.toStdString();
    EXPECT_EQ(1, r.err.count(path)) << r.err.toStdString();
    // The file is left as it was.
    EXPECT_EQ(4096, QFileInfo(path).size());
}

TEST_F(WorkstationProgram, BadArgumentsGiveAClearMessageAndStatusTwo)
{
    const ProgramRun r = Start({"--archve", "x.sqlite"});
    EXPECT_EQ(2, r.exitCode);
    EXPECT_EQ(QStringLiteral("bravik-workstation: unknown option '--archve'\nTry 'bravik-workstation --help'.\n"),
              r.err);
    const ProgramRun n = Start({"--demo-patients", "lots"});
    EXPECT_EQ(2, n.exitCode);
    EXPECT_TRUE(n.err.startsWith(
        QStringLiteral("bravik-workstation: --demo-patients wants a whole number from 0 to 1000000, not 'lots'\n")));
    // Nothing was created.
    EXPECT_FALSE(QFile::exists(DefaultArchive()));
}

TEST_F(WorkstationProgram, Help)
{
    const ProgramRun r = Start({"--help"});
    EXPECT_EQ(0, r.exitCode);
    EXPECT_TRUE(r.out.startsWith(QStringLiteral("Usage: bravik-workstation [OPTIONS]"))) << r.out.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("--screenshot FILE")));
    EXPECT_TRUE(r.err.isEmpty());
}

} // namespace
