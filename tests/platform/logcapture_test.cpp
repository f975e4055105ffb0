#include "logcapture.h"

#include <gtest/gtest.h>

#include <ace/Log_Msg.h>

#include <thread>

namespace {

int logCandidateRefused()
{
    ACE_LOG_MSG->file(__FILE__);
    const int line = __LINE__ + 1;
    ACE_LOG_MSG->linenum(line);
    ACE_LOG_MSG->log(LM_DEBUG, "Function: %s, Line: %d\n", "BuildQuery", line);
    return line;
}

} // namespace

TEST(LogCapture, RecordsTypeTextFileAndLine)
{
    LogCapture capture;
    const int line = logCandidateRefused();
    const std::vector<LogLine> lines = capture.Lines();
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ(LM_DEBUG, lines[0].type);
    EXPECT_EQ("Function: BuildQuery, Line: " + std::to_string(line) + "\n", lines[0].text);
    EXPECT_EQ(std::string(__FILE__), lines[0].file);
    EXPECT_EQ(line, lines[0].line);
}

TEST(LogCapture, TheDebugMacroSetsTheLocationToo)
{
    LogCapture capture;
    const int line = __LINE__ + 1;
    ACE_DEBUG((LM_INFO, "CDuplicatePatientPage::Search refused\n"));
    const std::vector<LogLine> lines = capture.Lines(LM_INFO);
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ("CDuplicatePatientPage::Search refused\n", lines[0].text);
    EXPECT_EQ(line, lines[0].line);
    EXPECT_TRUE(capture.Contains(LM_INFO, "CDuplicatePatientPage::Search refused\n"));
    EXPECT_FALSE(capture.Contains(LM_DEBUG, "CDuplicatePatientPage::Search refused\n"));
    EXPECT_TRUE(capture.Lines(LM_DEBUG).empty());
}

TEST(LogCapture, SeesLinesFromAnotherThread)
{
    LogCapture capture;
    int line = 0;
    std::thread worker([&] { line = logCandidateRefused(); });
    worker.join();
    ACE_LOG_MSG->log(LM_DEBUG, "from the test thread\n");
    const std::vector<LogLine> lines = capture.Lines();
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ(LM_DEBUG, lines[0].type);
    EXPECT_EQ("Function: BuildQuery, Line: " + std::to_string(line) + "\n", lines[0].text);
    EXPECT_EQ(line, lines[0].line);
    EXPECT_EQ(std::string(__FILE__), lines[0].file);
    EXPECT_NE(lines[0].thread, lines[1].thread);
    EXPECT_EQ("from the test thread\n", lines[1].text);
}

TEST(LogCapture, StopsCapturingWhenItGoes)
{
    std::vector<LogLine> lines;
    {
        LogCapture first;
        ACE_LOG_MSG->log(LM_DEBUG, "one\n");
        {
            LogCapture second;
            ACE_LOG_MSG->log(LM_DEBUG, "two\n");
            lines = second.Lines();
        }
        ASSERT_EQ(1u, lines.size());
        EXPECT_EQ("two\n", lines[0].text);
        ACE_LOG_MSG->log(LM_DEBUG, "three\n");
        lines = first.Lines();
        first.Clear();
        EXPECT_TRUE(first.Lines().empty());
    }
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ("one\n", lines[0].text);
    EXPECT_EQ("three\n", lines[1].text);
}
