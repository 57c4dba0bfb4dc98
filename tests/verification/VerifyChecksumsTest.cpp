#include "verification/VerifyChecksums.h"

#include "tests/support/MemoryFileContents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <string>
#include <vector>

namespace tolvane::verification {
namespace {

using attributes::StoredChecksum;

class VerifyChecksums : public testing::Test {
protected:
    static StoredChecksum stored(const std::string& name, std::string_view digits) {
        return attributes::storedChecksum(name, std::as_bytes(std::span(digits))).value();
    }

    std::vector<Verified> verified(const std::vector<StoredChecksum>& checksums) {
        return verifyChecksums(checksums, path, contents, [this](std::uint64_t done, std::uint64_t size) {
            steps.emplace_back(done, size);
            return steps.size() < mostSteps;
        });
    }

    const std::string path = "/a";
    std::map<std::string, std::string> files{{path, "abc"}};
    tests::MemoryFileContents contents{files};
    const StoredChecksum crc = stored("user.crc32", "352441c2");
    const StoredChecksum md5 = stored("user.checksum.md5", "900150983CD24FB0D6963F7D28E17F72");
    const StoredChecksum wrong = stored("user.md5", "00000000000000000000000000000000");
    const StoredChecksum unknown = stored("user.blake3", std::string(64, '0'));
    std::vector<std::pair<std::uint64_t, std::uint64_t>> steps;
    std::size_t mostSteps = SIZE_MAX;
};

TEST_F(VerifyChecksums, comparesTheContentWithEachInOneReading) {
    const auto results = verified({crc, md5, wrong, unknown});
    ASSERT_EQ(results.size(), 4U);
    EXPECT_EQ(sentenceAbout(results[0]), "CRC-32 in user.crc32: fits the content");
    EXPECT_EQ(sentenceAbout(results[1]), "MD5 in user.checksum.md5: fits the content");
    EXPECT_EQ(sentenceAbout(results[2]), "MD5 in user.md5: does not fit the content");
    EXPECT_EQ(sentenceAbout(results[3]), "BLAKE3 in user.blake3: cannot be computed here");
    EXPECT_EQ(steps.size(), 1U);
}

TEST_F(VerifyChecksums, readsContentsOfManyPieces) {
    const std::size_t pieces = 4;
    files[path] = std::string(pieces << 18U, 'x');
    const auto results = verified({crc});
    EXPECT_EQ(results.at(0).fit, Fit::doesNotFit);
    EXPECT_EQ(steps.size(), pieces + 1);
    EXPECT_EQ(steps.back().first, files[path].size());
    EXPECT_EQ(steps.back().second, files[path].size());
}

TEST_F(VerifyChecksums, readsNothingWithoutAChecksumToCompute) {
    files.clear();
    EXPECT_EQ(verified({unknown}).at(0).fit, Fit::notComputable);
    EXPECT_TRUE(verified({}).empty());
    EXPECT_TRUE(steps.empty());
}

TEST_F(VerifyChecksums, saysWhyTheContentCannotBeRead) {
    contents.unreadable.insert(path);
    EXPECT_EQ(
        sentenceAbout(verified({crc}).at(0)),
        "CRC-32 in user.crc32: the content cannot be read: Permission denied");
    files.clear();
    EXPECT_EQ(verified({crc}).at(0).reason, "No such file or directory");
}

TEST_F(VerifyChecksums, endsWhenTheCallerHasEnough) {
    mostSteps = 1;
    const auto results = verified({crc, unknown});
    EXPECT_EQ(sentenceAbout(results.at(0)), "CRC-32 in user.crc32: stopped");
    EXPECT_EQ(results.at(1).fit, Fit::notComputable);
}

TEST_F(VerifyChecksums, saysThatTheFileChangedWhileItWasRead) {
    const auto results = verifyChecksums(std::vector{crc}, path, contents, [this](auto, auto) {
        files[path] += "d";
        return true;
    });
    EXPECT_EQ(results.at(0).fit, Fit::notRead);
    EXPECT_EQ(results.at(0).reason, "The file changed while it was read");
}

TEST(FitNames, areDifferent) {
    EXPECT_EQ(nameOf(Fit::fits), "fits");
    EXPECT_EQ(nameOf(Fit::doesNotFit), "does not fit");
    EXPECT_EQ(nameOf(Fit::notComputable), "cannot be computed");
    EXPECT_EQ(nameOf(Fit::notRead), "cannot be read");
    EXPECT_EQ(nameOf(Fit::stopped), "stopped");
}

} // namespace
} // namespace tolvane::verification
