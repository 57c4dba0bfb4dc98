// Writes any value as JSON, has another reader read it, and compares.
#include "cli/JsonWriter.h"
#include "cli/Output.h"
#include "fuzz/AnyValue.h"
#include "fuzz/Fuzz.h"
#include "fuzz/WrittenText.h"
#include "platform/values/Utf8.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <string>
#include <type_traits>

namespace {

using namespace tolvane;
using Json = nlohmann::json;

void compare(const Json& json, const platform::Value& value);

/// What has no counterpart of its own is an object of one key, which names the kind.
const Json& within(const Json& json, const std::string& kind) {
    fuzz::require(json.is_object() && json.size() == 1 && json.contains(kind), "a kind has its object");
    return json.at(kind);
}

void compareKind(const Json& json, const platform::Array& array) {
    fuzz::require(json.is_array() && json.size() == array.size(), "an array keeps its elements");
    for (std::size_t i = 0; i < array.size(); ++i) {
        compare(json[i], array[i]);
    }
}

void compareKind(const Json& json, const platform::Dictionary& dictionary) {
    const Json& object = within(json, "dictionary");
    fuzz::require(object.is_object() && object.size() == dictionary.size(), "a dictionary keeps its entries");
    for (const auto& [key, value] : dictionary) {
        fuzz::require(object.contains(key), "a key is told as it is");
        compare(object.at(key), value);
    }
}

void compareKind(const Json& json, const platform::Data& data) {
    const std::string digits = within(json, "data").get<std::string>();
    fuzz::require(digits.size() == 2 * data.size(), "every byte is told");
    for (std::size_t i = 0; i < data.size(); ++i) {
        fuzz::require(
            std::stoi(digits.substr(2 * i, 2), nullptr, 16) == std::to_integer<int>(data[i]),
            "every byte is told as it is");
    }
}

void compareKind(const Json& json, const platform::Date& date) {
    fuzz::require(json.is_object() && json.size() == 2, "a date has two entries");
    fuzz::require(json.at("date").is_string() == date.hasCalendarDate(), "what has a date has it in JSON");
    const double seconds = date.timeIntervalSinceReferenceDate();
    fuzz::require(
        json.at("seconds").is_number() ? json.at("seconds").get<double>() == seconds
                                       : !std::isfinite(seconds),
        "a date has its seconds");
}

template <typename Kind>
void compareKind(const Json& json, const Kind& kind) {
    if constexpr (std::is_same_v<Kind, platform::Null>) {
        fuzz::require(json.is_null(), "nothing is null");
    } else if constexpr (std::is_same_v<Kind, bool>) {
        fuzz::require(json.is_boolean() && json.get<bool>() == kind, "a truth is told as it is");
    } else if constexpr (std::is_integral_v<Kind>) {
        fuzz::require(json.is_number_integer() && json.get<Kind>() == kind, "an integer is exact");
    } else if constexpr (std::is_floating_point_v<Kind>) {
        if (std::isfinite(kind)) {
            fuzz::require(
                json.is_number_float() && json.get<double>() == static_cast<double>(kind),
                "a fraction is exact");
        } else {
            fuzz::require(within(json, "number").is_string(), "what is no number has its word");
        }
    } else if constexpr (std::is_same_v<Kind, platform::URL>) {
        fuzz::require(within(json, "url") == kind.absoluteString(), "a URL is told as it is");
    } else if constexpr (std::is_same_v<Kind, platform::UUID>) {
        fuzz::require(within(json, "uuid") == kind.text(), "an identifier is told as it is");
    } else {
        static_assert(std::is_same_v<Kind, std::string>);
        fuzz::require(json.is_string(), "a text is one");
        fuzz::require(!platform::isValidUtf8(kind) || json == kind, "a text is told as it is");
    }
}

void compare(const Json& json, const platform::Value& value) {
    std::visit([&](const auto& kind) { compareKind(json, kind); }, value.storage());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const platform::Value value = fuzz::AnyValue(fuzz::textOf(data, size)).value();
    for (const bool ascii : {false, true}) {
        fuzz::WrittenText written;
        cli::Output output(written);
        cli::JsonWriter(output, ascii).value(value).finish();
        output.flush();
        fuzz::requireJsonLine(written.text(), ascii);
        compare(Json::parse(written.text(), nullptr, false), value);
    }
    fuzz::WrittenText written;
    cli::Output output(written);
    const std::uint32_t any = static_cast<std::uint32_t>(size) * 40'503U;
    cli::JsonWriter(output, true).hexNumber(any, size % 9).finish();
    output.flush();
    const std::string number = Json::parse(written.text(), nullptr, false).get<std::string>();
    fuzz::require(number.starts_with("0x") && number.size() >= 2 + size % 9, "a number has its digits");
    fuzz::require(
        number.size() == 2 ? size == 0 : std::stoul(number, nullptr, 16) == any,
        "a number in hexadecimal is the same number");
    return 0;
}
