#include "attributes/Inflate.h"
#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

TEST(DropboxRecords, areCompressedJson) {
    expectLines("user.com.dropbox.attributes", zlibStored("{\"a\":1}"), {"JSON: {\"a\":1}"});
    expectEveryCutRefused("com.dropbox.attributes", zlibStored("{}"));
    expectRefused("com.dropbox.attributes", {zlibStored("{}") + "x", zlibStored("\xFF")});
}

TEST(DropboxRecords, haveAnIdentity) {
    const std::string value = bytesOfHex("0a120a10 00112233445566778899aabbccddeeff 10 ac02 1a 02 7879");
    expectLines(
        "com.dropbox.attrs", value,
        {"File: 00112233445566778899aabbccddeeff", "Field 2: 300", "Field 3: 7879"});
    expectRefused("com.dropbox.attrs", {value.substr(0, 10)});
}

TEST(Inflate, stopsAtItsLimit) {
    const auto inflate = [](const std::string& bytes) {
        return attributes::inflated(std::as_bytes(std::span(bytes)));
    };
    EXPECT_EQ(
        inflate(zlibStored(std::string(attributes::mostInflated - 1, 'a')))->size(),
        attributes::mostInflated - 1);
    EXPECT_EQ(inflate(zlibStored(std::string(attributes::mostInflated + 65'536, 'a'))), std::nullopt);
    EXPECT_EQ(inflate(zlibStored(""))->size(), 0U);
    EXPECT_EQ(inflate(""), std::nullopt);
    std::string wrongSum = zlibStored("abc");
    wrongSum.back() = static_cast<char>(wrongSum.back() ^ 1);
    EXPECT_EQ(inflate(wrongSum), std::nullopt);
}

} // namespace
} // namespace tolvane::tests
