// The workstation's command line.
#include "workstationoptions.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace {

ParseResult Parse(const QStringList& args, WorkstationOptions& o, QString& error)
{
    return ParseWorkstationArgs(args, o, error);
}

TEST(WorkstationOptions, DefaultsWithoutArguments)
{
    WorkstationOptions o;
    QString error;
    EXPECT_EQ(ParseResult::Run, Parse({}, o, error));
    EXPECT_TRUE(o.archivePath.isEmpty());
    EXPECT_TRUE(o.userName.isEmpty());
    EXPECT_TRUE(o.screenshotPath.isEmpty());
    EXPECT_EQ(1000, o.demoPatients);
}

TEST(WorkstationOptions, EveryOptionInBothForms)
{
    WorkstationOptions o;
    QString error;
    EXPECT_EQ(ParseResult::Run, Parse({"--archive", "/tmp/a.sqlite", "--user=clerk", "--demo-patients", "200",
                                       "--screenshot=/tmp/s.png"},
                                      o, error))
        << error.toStdString();
    EXPECT_EQ(QStringLiteral("/tmp/a.sqlite"), o.archivePath);
    EXPECT_EQ(QStringLiteral("clerk"), o.userName);
    EXPECT_EQ(200, o.demoPatients);
    EXPECT_EQ(QStringLiteral("/tmp/s.png"), o.screenshotPath);
}

TEST(WorkstationOptions, QtsOwnOptionsAreLeftToQt)
{
    WorkstationOptions o;
    QString error;
    EXPECT_EQ(ParseResult::Run, Parse({"-platform", "offscreen", "--user", "admin"}, o, error));
    EXPECT_EQ(QStringLiteral("admin"), o.userName);
}

TEST(WorkstationOptions, Help)
{
    WorkstationOptions o;
    QString error;
    EXPECT_EQ(ParseResult::Help, Parse({"--archive", "x", "--help"}, o, error));
    EXPECT_TRUE(WorkstationUsage().startsWith(QStringLiteral("Usage: bravik-workstation [OPTIONS]")));
    EXPECT_TRUE(WorkstationUsage().contains(QStringLiteral("--archive FILE")));
}

TEST(WorkstationOptions, BadArgumentsAreNamed)
{
    struct Case
    {
        QStringList args;
        QString message;
    };
    const Case cases[] = {
        {{"--bogus"}, "unknown option '--bogus'"},
        {{"archive.sqlite"}, "unexpected argument 'archive.sqlite'"},
        {{"--archive"}, "--archive needs a value"},
        {{"--archive="}, "--archive needs a non-empty value"},
        {{"--user"}, "--user needs a value"},
        {{"--screenshot"}, "--screenshot needs a value"},
        {{"--demo-patients", "many"}, "--demo-patients wants a whole number from 0 to 1000000, not 'many'"},
        {{"--demo-patients", "-5"}, "--demo-patients wants a whole number from 0 to 1000000, not '-5'"},
        {{"--demo-patients=1000001"}, "--demo-patients wants a whole number from 0 to 1000000, not '1000001'"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.join(' ').toStdString());
        WorkstationOptions o;
        QString error;
        EXPECT_EQ(ParseResult::Error, Parse(c.args, o, error));
        EXPECT_EQ(c.message, error);
    }
}

TEST(WorkstationOptions, DefaultArchiveIsInTheUsersDataFolder)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Bravik"));
    QCoreApplication::setApplicationName(QStringLiteral("bravik-workstation"));
    const QString path = DefaultArchivePath();
    EXPECT_TRUE(path.endsWith(QStringLiteral("/Bravik/bravik-workstation/archive.sqlite"))) << path.toStdString();
}

} // namespace
