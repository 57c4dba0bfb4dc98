// Attributes that were measured elsewhere.
#include "platform/values/Utf8.h"
#include "tests/attributes/Explaining.h"
#include "tests/support/SharedSamples.h"

namespace tolvane::tests {
namespace {

using attributes::Explanation;
using testing::HasSubstr;

struct Row {
    std::string name;
    std::string value;
    std::string meaning;
};

class AttributeSamples : public SharedSamples {
protected:
    AttributeSamples() : SharedSamples("attributes") {}

    std::vector<Row> rows() const {
        std::vector<Row> rows;
        for (const auto& cells : rowsOf("examples.tsv", 3)) {
            rows.push_back({cells[0].substr(0, cells[0].find(" / ")), bytesOfHex(cells[1]), cells[2]});
        }
        return rows;
    }
};

std::string everything(const Explanation& explanation) {
    std::string text = explanation.summary + "\n";
    for (const std::string& line : linesOf(explanation)) {
        text += line + "\n";
    }
    return text;
}

TEST_F(AttributeSamples, areAllInTheirForm) {
    std::size_t guesses = 0;
    for (const Row& row : rows()) {
        const Explanation explanation = explained(row.name, row.value);
        EXPECT_THAT(explanation.notes, testing::IsEmpty()) << row.name << ": " << row.meaning;
        guesses += explanation.certainty == attributes::Certainty::guess ? 1U : 0U;
    }
    EXPECT_EQ(rows().size(), 125U);
    // Three names in them belong to no one that is known.
    EXPECT_EQ(guesses, 3U);
}

/// What the table's own words state, as it stands in ours: the first text is in the meaning of a row of this
/// name, the second in our explanation of it.
TEST_F(AttributeSamples, meanWhatTheirSourcesState) {
    struct Statement {
        std::string name;
        std::string stated;
        std::string ours;
    };
    const std::vector<Statement> statements{
        {"btrfs.compression", "zstd", "with zstd."},
        {"com.apple.FinderInfo", "label 2 = green", "label green"},
        {"com.apple.FinderInfo", "label 5 = yellow", "label yellow"},
        {"com.apple.FinderInfo", "stationery pad", "stationery"},
        {"com.apple.FinderInfo", "folder hidden", "invisible"},
        {"com.apple.FinderInfo", "alias file", "alias file"},
        {"com.apple.FinderInfo", "file type 0xB1", "ProDOS type: 0xb1"},
        {"com.apple.FinderInfo", "auxiliary type 0xdb07", "ProDOS auxiliary type: 0xdb07"},
        {"com.apple.TextEncoding", "UTF-8 (CFStringEncoding 0x08000100)", "Number: UTF-8"},
        {"com.apple.TextEncoding", "UTF-16", "Number: UTF-16 (0x100)"},
        {"com.apple.decmpfs", "uncompressed size 68176", "68176 bytes"},
        {"com.apple.diskimages.recentcksum", "2017-12-06T23:21:05Z: CRC32 795518E5", "Checksum: 795518E5"},
        {"com.apple.lastuseddate#PS", "2020-11-12T12:27:26Z", "2020-11-12 12:27:26"},
        {"com.apple.macl", "3 of 4 slots", "3 of 4 slots"},
        {"com.apple.metadata:_kMDItemUserTags", "tag named \"Yellow\" whose colour number is 1",
         "Yellow (gray)"},
        {"com.apple.metadata:_kMDItemUserTags", "Red (6 red)", "Red (red), Orange (orange), Yellow (yellow)"},
        {"com.apple.metadata:kMDItemDownloadedDate", "2016-10-30T13:55:21.045603Z",
         "2016-10-30 13:55:21.045603 UTC"},
        {"com.apple.metadata:kMDItemFinderComment", "A Finder comment", "A Finder comment"},
        {"com.apple.provenance", "0x6de20d47d1050f14", "0x6de20d47d1050f14"},
        {"com.apple.quarantine",
         "flags 0x0082 (sandbox+translocate), set 2020-11-12T12:27:26Z, agent 'Safari'",
         "saved on 2020-11-12 12:27:26 UTC by the sandboxed application Safari, not a download"},
        {"com.apple.quarantine", "0x00c1", "the user has opened and allowed it"},
        {"com.apple.quarantine", "bundle id org.mozilla.firefox", "Bundle: org.mozilla.firefox"},
        {"com.dropbox.attributes", "FRrcRk/y525nuGJRcXkPYA==", "FRrcRk/y525nuGJRcXkPYA=="},
        {"security.NTACL", "group=S-1-22-2-501", "Group: S-1-22-2-501 (Unix group 501)"},
        {"security.capability", "cap_setuid+ep", "cap_setuid=ep"},
        {"security.capability", "inheritable cap_syslog", "cap_syslog=ei cap_net_raw+ep"},
        {"security.ima", "key id b0e9d679", "Key: 0xb0e9d679"},
        {"system.nfs4_acl", "mask 0x001601e7 OWNER@", "allow OWNER@: "},
        {"system.posix_acl_access", "user:1500:rwx", "user:1500:rwx"},
        {"trusted.overlay.origin", "inode 1048658", "Inode: 1048658"},
        {"user.DOSATTRIB", "created 2025-09-27T17:12:50.7515610Z", "Created: 2025-09-27 17:12:50.751561 UTC"},
        {"user.WINEREPARSE", "13.783.0.6296\\EA Desktop", "Target: 13.783.0.6296\\EA Desktop"},
        {"user.baloo.rating", "three stars", "3 of 5 stars"},
        {"user.coredump.timestamp", "2021-12-18T15:20:30Z", "2021-12-18 15:20:30 UTC"},
        {"user.org.netatalk.Metadata", "2017-12-05T16:32:51Z", "Created: 2017-12-05 16:32:51 UTC"},
        {"user.rootlesscontainers", "gid unchanged", "Group: unchanged"},
        {"user.rsync.%stat", "mode 4755", "rwsr-xr-x (4755)"},
        {"user.shatag.ts", "2019-06-10T14:35:34.020775051Z", "2019-06-10 14:35:34.020775051 UTC"}};
    for (const Statement& statement : statements) {
        bool isFound = false;
        for (const Row& row : rows()) {
            if (row.name == statement.name && row.meaning.contains(statement.stated)) {
                isFound = true;
                EXPECT_THAT(everything(explained(row.name, row.value)), HasSubstr(statement.ours))
                    << row.meaning;
            }
        }
        EXPECT_TRUE(isFound) << statement.name << ": " << statement.stated;
    }
}

TEST_F(AttributeSamples, staySoundWhenAnyByteIsChanged) {
    for (const Row& row : rows()) {
        for (std::size_t i = 0; i < row.value.size(); ++i) {
            std::string changed = row.value;
            changed[i] = static_cast<char>(static_cast<unsigned char>(changed[i]) ^ 0x81U);
            const std::string words = everything(explained(row.name, changed));
            ASSERT_TRUE(platform::isValidUtf8(words)) << row.name;
            ASSERT_LT(words.size(), 1000 * (row.value.size() + 100)) << row.name;
        }
    }
}

} // namespace
} // namespace tolvane::tests
