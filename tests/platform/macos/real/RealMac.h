#pragma once

#include "tests/contracts/SystemUnderTest.h"
#include "tests/platform/macos/real/programs/SystemPrograms.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests::macos {

/// A test on a Mac, of what the services and the system's own programs say of the same item.
class RealMac : public contracts::ContractTest {
protected:
    /// What a program prints, without the last line feed. Its failure fails the test.
    static std::string said(const std::vector<std::string>& command) {
        ProgramAnswer answer = answerOf(command);
        EXPECT_EQ(answer.status, 0) << command[0] << " failed";
        while (answer.out.ends_with('\n')) {
            answer.out.pop_back();
        }
        return answer.out;
    }

    /// The number that `stat` prints for a field of its format.
    static std::int64_t statSays(const std::string& path, const std::string& field) {
        return std::stoll("0" + said({"/usr/bin/stat", "-f", field, path}));
    }
};

} // namespace tolvane::tests::macos
