// Property lists that Macs made.
#include "tests/platform/propertylist/Reading.h"
#include "tests/support/PropertyListWriters.h"
#include "tests/support/SharedSamples.h"

#include <tuple>

namespace tolvane::platform {
namespace {

using namespace tests;

class PropertyListSamples : public SharedSamples {
protected:
    PropertyListSamples() : SharedSamples("carriers") {}
};

const Value* entryOf(const Value& value, std::string_view key) {
    const auto* const dictionary = value.as<Dictionary>();
    return dictionary == nullptr ? nullptr : dictionary->find(key);
}

TEST_F(PropertyListSamples, areReadAndReadTheSameWrittenAgain) {
    constexpr auto binary = PropertyListForm::binary;
    constexpr auto xml = PropertyListForm::xml;
    using Sample = std::tuple<const char*, PropertyListForm, const char*>;
    for (const auto& [name, form, key] :
         {Sample{"sfl2/wader-fq--recentdocs.sfl2", binary, "$objects"},
          Sample{
              "sfl2/puffyCid-macos-loginitems--com.apple.LSSharedFileList.GlobalLoginItems.sfl2", xml,
              "$top"},
          Sample{"btm/log2timeline-plaso--backgrounditems.btm", binary, "$objects"},
          Sample{"btm/puffyCid-macos-loginitems--backgrounditemsPoisonApple.btm", binary, "$top"},
          Sample{"btm/puffyCid-macos-loginitems--bad_bookmark.btm", xml, "$objects"},
          Sample{"btm/puffyCid-macos-loginitems--loginitems.501.plist", xml, "com.docker.helper"},
          Sample{"dock-plist/Velocidex-velociraptor--com.apple.dock.plist", binary, "persistent-apps"},
          Sample{"loginitems/log2timeline-plaso--com.apple.loginitems.plist", binary, "SessionItems"},
          Sample{"other-plist/log2timeline-plaso--com.apple.TimeMachine.plist", binary, "Destinations"},
          Sample{"other-plist/log2timeline-plaso--Downloads.plist", binary, "DownloadHistory"},
          Sample{"webloc/tischda-webloc--binary-plist.webloc", binary, "URL"},
          Sample{"webloc/tischda-webloc--xml-content.webloc", xml, "URL"}}) {
        const Value value = listValue(text(name), form);
        EXPECT_NE(entryOf(value, key), nullptr) << name << ": " << description(value).substr(0, 300);
        EXPECT_EQ(listValue(binaryPropertyList(value).value(), binary), value) << name;
    }
}

TEST_F(PropertyListSamples, haveTheIdentifiersOfKeyedArchives) {
    const Value value = listValue(text("sfl2/wader-fq--recentdocs.sfl2"), PropertyListForm::binary);
    const Value* const top = entryOf(value, "$top");
    ASSERT_NE(top, nullptr);
    const Value* const root = entryOf(*top, "root");
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(*root, Value(Dictionary{{"CF$UID", std::int64_t{1}}}));
}

} // namespace
} // namespace tolvane::platform
