// Where every test program begins.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <set>
#include <string>

namespace {

/// The names in tests/may-skip: the first word of each line, but for comments.
std::set<std::string> namesThatMaySkip() {
    std::set<std::string> names;
    std::ifstream list(TOLVANE_SOURCE_DIR "/tests/may-skip");
    for (std::string line; std::getline(list, line);) {
        const std::string name = line.substr(0, line.find(' '));
        if (!name.starts_with('#')) {
            names.insert(name);
        }
    }
    return names;
}

/// Names on standard output the tests that were skipped though they are not listed; true when there is none.
bool everySkipIsListed() {
    const std::set<std::string> listed = namesThatMaySkip();
    const testing::UnitTest& program = *testing::UnitTest::GetInstance();
    bool isListed = true;
    for (int i = 0; i < program.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *program.GetTestSuite(i);
        for (int k = 0; k < suite.total_test_count(); ++k) {
            const testing::TestInfo& test = *suite.GetTestInfo(k);
            const std::string name = std::string(suite.name()) + "." + test.name();
            if (test.result()->Skipped() && !listed.contains(name)) {
                std::cout << name << " was skipped and is not in tests/may-skip\n";
                isListed = false;
            }
        }
    }
    return isListed;
}

} // namespace

int main(int argc, char** argv) {
    // Many tests share a process, so some have left threads behind when another forks to see it end.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    testing::InitGoogleMock(&argc, argv);
    const int status = RUN_ALL_TESTS();
    return std::getenv("TOLVANE_NO_SKIPS") == nullptr || everySkipIsListed() ? status : 1;
}
