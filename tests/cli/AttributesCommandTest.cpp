#include "tests/cli/CliProgram.h"
#include "tests/cli/WrittenJson.h"
#include "tests/support/AppleDoubleFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

using cli::ExitStatus;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using namespace std::string_literals;

class AttributesCommand : public CliProgram {
protected:
    AttributesCommand() {
        fileManager.answer = platform::Dictionary{
            {std::string(platform::NSFileExtendedAttributes),
             platform::Dictionary{
                 {"user.unknown\x1B", bytesOf("\x01\x02\x03")},
                 {"user.xdg.origin.url", bytesOf("https://example.org/\n")}}},
            {std::string(platform::NSFileSize), std::int64_t{0}},
            {std::string(platform::NSFileType), std::string(platform::NSFileTypeRegular)}};
    }

    static std::string companionText() {
        return std::string(
            textOfBytes(companionFileWithAttributes({{"com.apple.quarantine", "0001;0;Browser;"}})));
    }
};

TEST_F(AttributesCommand, printsTitleNameSentenceAndFieldsOfEach) {
    EXPECT_EQ(
        printed("attributes a.txt"),
        "Attributes of /here/a.txt:\n"
        "\n"
        "Unknown attribute: user.unknown\x1B (guess)\n"
        "    Bytes of no form that is known here.\n"
        "        Bytes: 010203\n"
        "\n"
        "Origin: user.xdg.origin.url\n"
        "    Address that the file was downloaded from; browsers and download programs write it.\n"
        "        Address: https://example.org/⟨LF⟩\n");
}

TEST_F(AttributesCommand, putsABlankLineBetweenItems) {
    fileManager.answer = platform::Dictionary{};
    attributes.attributes.clear();
    EXPECT_EQ(printed("attributes a b"), "Attributes of /here/a: none\n\nAttributes of /here/b: none\n");
}

TEST_F(AttributesCommand, printsTheSameWithSeveralThreads) {
    Words arguments = "attributes --jobs 4";
    std::string lines;
    fileManager.answer = platform::Dictionary{};
    attributes.attributes.clear();
    for (int i = 0; i < 100; ++i) {
        arguments.push_back(std::to_string(i));
        lines += (i == 0 ? "" : "\n") + ("Attributes of /here/" + arguments.back()) + ": none\n";
    }
    EXPECT_EQ(printed(arguments), lines);
}

TEST_F(AttributesCommand, escapesNamesOnATerminal) {
    output.terminal = true;
    EXPECT_THAT(
        printed({"attributes", "a\x1B"}),
        StartsWith("Attributes of /here/a\\x1b:\n\nUnknown attribute: user.unknown\\x1b (guess)\n"));
}

TEST_F(AttributesCommand, readsEachValueByItselfWhereTheDictionaryHasNone) {
    fileManager.answer = platform::Dictionary{};
    attributes.attributes = {{"user.xdg.tags", "a"}, {"user.secret", "b"}, {"user.empty", ""}};
    attributes.onSize = [](const char*, const char* name) -> platform::ExtendedAttributeCalls::Answer {
        const std::string_view asked(name);
        return asked == "user.secret"  ? platform::ExtendedAttributeCalls::Answer(std::unexpected(EACCES))
               : asked == "user.empty" ? 0
                                       : 1;
    };
    EXPECT_EQ(run("attributes a"), ExitStatus::failure);
    EXPECT_THAT(output.text, HasSubstr("Tags: user.xdg.tags\n"));
    EXPECT_THAT(output.text, HasSubstr("Marker: user.empty (guess)\n"));
    EXPECT_EQ(errors.text, "tolvane-cli: a: user.secret: Permission denied\n");
}

TEST_F(AttributesCommand, complainsWhereTheAttributesCannotBeListed) {
    fileManager.answer = platform::Dictionary{};
    attributes.onList = [](const char*, std::span<char>) { return std::unexpected(EACCES); };
    EXPECT_EQ(run("attributes a"), ExitStatus::failure);
    EXPECT_EQ(output.text, "Attributes of /here/a:\n");
    EXPECT_EQ(errors.text, "tolvane-cli: a: the attributes: Permission denied\n");
    attributes.onList = [](const char*, std::span<char>) { return std::unexpected(ENOTSUP); };
    EXPECT_EQ(printed("attributes a"), "Attributes of /here/a: none\n");
}

TEST_F(AttributesCommand, goesOnAfterAnItemThatIsNotThere) {
    fileManager.answer = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(run({"attributes", "a", "", "b"}), ExitStatus::failure);
    EXPECT_EQ(
        errors.text, "tolvane-cli: a: No such file or directory\n"
                     "tolvane-cli: '': No such file or directory\n"
                     "tolvane-cli: b: No such file or directory\n");
}

TEST_F(AttributesCommand, takesNamesFromAList) {
    EXPECT_THAT(printed("attributes --files0-from=-", "a\0b\0"s), HasSubstr("\n\nAttributes of /here/b:\n"));
}

TEST_F(AttributesCommand, takesACompanionFileApart) {
    setAttributes({});
    files["/here/._a"] = companionText();
    files["/x/.AppleDouble/a"] = companionText();
    EXPECT_THAT(
        printed("attributes ._a"),
        HasSubstr("Attributes of /here/._a: none\n\nIn the companion file ._a:\n\n"));
    EXPECT_THAT(output.text, EndsWith("        Agent: Browser\n"));
    EXPECT_THAT(printed("attributes /x/.AppleDouble/a"), HasSubstr("In the companion file a:\n"));
}

TEST_F(AttributesCommand, findsTheCompanionBesideAnItem) {
    files["/here/._a"] = companionText();
    EXPECT_THAT(
        printed("attributes a"),
        HasSubstr("\n\nIn the companion file ._a:\n\nFinder information: com.apple.FinderInfo\n"));
    files = {{"/here/.AppleDouble/a", companionText()}};
    EXPECT_THAT(printed("attributes a"), HasSubstr("In the companion file a:\n"));
    files.clear();
    EXPECT_THAT(printed("attributes a"), Not(HasSubstr("companion")));
}

TEST_F(AttributesCommand, opensNothingButRegularFiles) {
    files["/here/._a"] = companionText();
    for (const std::string_view type :
         {platform::NSFileTypeDirectory, platform::NSFileTypeSymbolicLink, platform::NSFileTypeUnknown}) {
        fileManager.answer->set(platform::NSFileType, std::string(type));
        EXPECT_THAT(printed("attributes ._a"), Not(HasSubstr("companion")));
    }
}

TEST_F(AttributesCommand, ignoresAFileThatOnlyHasTheNameOfACompanion) {
    files["/here/._a"] = "just text";
    EXPECT_THAT(printed("attributes ._a"), Not(HasSubstr("companion")));
}

TEST_F(AttributesCommand, saysThatACompanionIsTooLongOrDamaged) {
    files["/here/._a"] = std::string((std::size_t{16} << 20U) + 1, 'a');
    EXPECT_EQ(run("attributes ._a"), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: ._a: /here/._a: File too large\n");
    // The value's offset now lies outside.
    std::string damaged = companionText();
    damaged.replace(26 + 2 * 12 + 32 + 2 + 36, 4, "\x7F\xFF\xFF\xFF");
    files["/here/._a"] = damaged;
    EXPECT_EQ(run("attributes ._a"), ExitStatus::failure);
    EXPECT_THAT(errors.text, HasSubstr("was expected at byte"));
}

TEST_F(AttributesCommand, printsPermissionsAndStatusBelowTheAttributes) {
    facts = &statusFacts;
    EXPECT_THAT(
        printed("attributes a"),
        EndsWith("\n\nPermissions and status\n"
                 "                read  write  execute\n"
                 "        Owner   yes   -      -\n"
                 "        Group   -     -      -\n"
                 "        Others  -     -      -\n"
                 "    What is permitted on this regular file: its owner 1000: read; group 0: nothing; "
                 "others: nothing.\n"
                 "        Permissions: r-------- (0400)\n"
                 "        Size on disk: 512 bytes\n"
                 "    Note: Not known without opening the item: the project number, and the flags that "
                 "lsattr shows as s u c S i a d A m E I j t D T e V C x N P F\n"));
    setAttributes({{"system.posix_acl_access", bytesOf("x")}});
    EXPECT_THAT(printed("attributes a"), HasSubstr("    Note: The item has an access control list: "));
    statusFacts.facts = std::unexpected(platform::posixError(EACCES));
    EXPECT_THAT(printed("attributes a"), Not(HasSubstr("Permissions")));
}

TEST_F(AttributesCommand, explainsTheAttributesOfALinkWhoseTargetIsGone) {
    CallLog log;
    ScriptedExtendedAttributes ofLink(log);
    ofLink.attributes = {{"trusted.overlay.opaque", "y"}};
    linkAttributes = &ofLink;
    fileManager.answer = platform::Dictionary{
        {std::string(platform::NSFileType), std::string(platform::NSFileTypeSymbolicLink)}};
    attributes.onList = [](const char*, std::span<char>) { return std::unexpected(ENOENT); };
    EXPECT_THAT(
        printed("attributes a"),
        StartsWith("Attributes of /here/a:\nThe target of this link cannot be reached; these are attributes "
                   "of the link itself.\n\nOverlay"));
    EXPECT_EQ(Json::parse(printed("attributes --json a"))["areOfLink"], true);
    // The target is there now.
    files["/here/a"] = "";
    EXPECT_EQ(run("attributes a"), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: a: the attributes: No such file or directory\n");
}

TEST_F(AttributesCommand, readsTheContentOnlyToVerifyChecksums) {
    EXPECT_THAT(printed("attributes --verify a"), EndsWith("\n\nChecksums: none stored\n"));
    setAttributes(
        {{"user.crc32", bytesOf("352441c2")}, {"user.md5", bytesOf("00000000000000000000000000000000")}});
    contents.unreadable.insert("/here/a");
    files["/here/a"] = "abc";
    EXPECT_THAT(printed("attributes a"), Not(HasSubstr("Checksums\n")));
    EXPECT_EQ(run("attributes --verify a"), ExitStatus::failure);
    EXPECT_THAT(errors.text, HasSubstr("tolvane-cli: a: CRC-32 in user.crc32: the content cannot be read: "));
    contents.unreadable.clear();
    EXPECT_EQ(run("attributes --verify a"), ExitStatus::failure);
    EXPECT_THAT(
        output.text, EndsWith("\n\nChecksums\n"
                              "    CRC-32 in user.crc32: fits the content\n"
                              "    MD5 in user.md5: does not fit the content\n"));
    EXPECT_EQ(errors.text, "tolvane-cli: a: MD5 in user.md5: does not fit the content\n");
}

TEST_F(AttributesCommand, explainsAValueFromElsewhere) {
    EXPECT_EQ(
        printed({"attributes", "--explain", "user.baloo.rating", "--hex", "0x 38"}),
        "Rating: user.baloo.rating\n"
        "    Rating given in a file manager or picture viewer: 4 of 5 stars.\n"
        "        Rating: 8 of 10\n"
        "        Stars: 4 of 5\n");
    files["/value"] = "9";
    EXPECT_THAT(
        printed("attributes --explain user.baloo.rating --value-file /value"),
        HasSubstr("4 and a half of 5"));
    EXPECT_THAT(
        printed("attributes --explain user.baloo.rating --value-file=-", "2"), HasSubstr("1 of 5 stars"));
    EXPECT_THAT(
        printed({"attributes", "--explain", "user.x", "--hex", ""}), HasSubstr("A marker without a value."));
}

TEST_F(AttributesCommand, notesWhatIsNotInItsForm) {
    EXPECT_THAT(
        printed("attributes --explain user.baloo.rating --hex 00"),
        EndsWith("        Bytes: 00\n    Note: Not in the expected form: at byte 0 of 1, a number from 0 to "
                 "10 was expected\n"));
}

TEST_F(AttributesCommand, refusesAValueThatCannotBeRead) {
    for (const char* const wrong : {"0", "0g", "00 0", "-1"}) {
        EXPECT_EQ(
            complaint({"attributes", "--explain=x", std::string("--hex=") + wrong}),
            "tolvane-cli: --hex: not pairs of hexadecimal digits\n");
    }
    EXPECT_EQ(
        complaint("attributes --explain=x --value-file=/no"),
        "tolvane-cli: /no: No such file or directory\n");
    files["/large"] = std::string((std::size_t{16} << 20U) + 1, 'a');
    EXPECT_EQ(
        complaint("attributes --explain=x --value-file=/large"), "tolvane-cli: /large: File too large\n");
}

TEST_F(AttributesCommand, printsOneObjectForAValue) {
    const Json object = Json::parse(printed("attributes --explain user.baloo.rating --hex 38 --json"));
    EXPECT_EQ(object["title"], "Rating");
    EXPECT_EQ(object["certainty"], "documented");
    EXPECT_EQ(object["fields"][0].dump(), R"({"name":"Rating","text":"8 of 10","value":8})");
    EXPECT_THAT(output.text, EndsWith("}\n"));
}

TEST_F(AttributesCommand, addsItsWordsBelowAReport) {
    const std::string report = printed("report a");
    session.time = 0;
    EXPECT_EQ(
        printed("report --explain a"),
        report + printed("attributes a").substr(std::string("Attributes of /here/a:\n").size()));
}

} // namespace
} // namespace tolvane::tests
