#include "archivefixture.h"

#include <hoststate.h>

#include <SQLiteCpp/Statement.h>

#include <atomic>
#include <unistd.h>

void ArchiveFixture::SetUp()
{
    ResetHostState();
    static std::atomic<int> serial{0};
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    m_dir = std::filesystem::temp_directory_path() /
            ("bravik-archive-" + std::to_string(getpid()) + "-" + std::to_string(serial++));
    std::filesystem::remove_all(m_dir);
    std::filesystem::create_directories(m_dir);
    m_path = (m_dir / (std::string(info ? info->name() : "test") + ".db")).string();
    m_archive = Archive::Open(m_path);
    m_builder = std::make_unique<ArchiveBuilder>(m_archive->Db());

    auto& b = *m_builder;
    b.StandardDictionaries();
    m_enterprise = b.Org(ArchiveBuilder::OrgFields{"Enterprise", "Enterprise", true});
    m_north = b.Org("NORTH");
    m_south = b.Org("SOUTH");
    ArchiveBuilder::OrgFields fed{"FED", "Regional Exchange"};
    fed.federated = true;
    m_federated = b.Org(fed);
    b.User("admin", true);
    b.User("reader");
    for (const auto& org : {m_enterprise, m_north, m_south, m_federated})
        b.Grant("admin", org, true, true, true);
    m_archive->SetUser("admin");
}

void ArchiveFixture::TearDown()
{
    m_builder.reset();
    m_archive.reset();
    ResetHostState();
    std::error_code ec;
    std::filesystem::remove_all(m_dir, ec);
}

long long ArchiveFixture::Count(const std::string& sql)
{
    return Db().Handle().execAndGet(sql).getInt64();
}

std::string ArchiveFixture::Text(const std::string& sql)
{
    SQLite::Statement q(Db().Handle(), sql);
    return q.executeStep() && !q.getColumn(0).isNull() ? q.getColumn(0).getString() : std::string("<none>");
}

std::string ArchiveFixture::NorthPatient(const std::string& last, const std::string& first, const std::string& dob,
                                         const std::string& gid)
{
    return Build().Patient(m_north, "", last, first, "M", dob, gid);
}
