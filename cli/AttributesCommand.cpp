#include "cli/AttributesCommand.h"

#include "cli/AttributesText.h"
#include "cli/JsonAttributes.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "platform/services/DocumentOpening.h"
#include "platform/services/FileManager.h"
#include "platform/values/HexDigits.h"
#include "platform/values/Utf8.h"

#include <array>
#include <cerrno>

namespace tolvane::cli {

using details::ItemExplanations;
using platform::Data;
using platform::Result;

namespace {

/// No value from elsewhere is longer; those of Linux have at most 64 KiB, resource forks more.
constexpr std::size_t longestValue = std::size_t{16} << 20U;

// An item takes some ten microseconds, and so does handing a name to another thread.
constexpr std::size_t itemsAtOnce = 16;

/// The bytes of hexadecimal digits; "0x" before them and white space between them are ignored.
std::optional<Data> dataOfHex(std::string_view digits) {
    digits.remove_prefix(digits.starts_with("0x") || digits.starts_with("0X") ? 2 : 0);
    Data data;
    int high = -1;
    for (const char c : digits) {
        if (c == ' ' || c == '\t' || c == '\n' || c == '\r') {
            continue;
        }
        const int digit = platform::valueOfHexDigit(c);
        if (digit < 0) {
            return std::nullopt;
        }
        if (high < 0) {
            high = digit;
        } else {
            data.push_back(static_cast<std::byte>(high * 16 + digit));
            high = -1;
        }
    }
    return high < 0 ? std::optional(std::move(data)) : std::nullopt;
}

Result<Data> dataInStream(platform::InputStream& stream) {
    Data data;
    std::array<char, 65'536> buffer{};
    while (true) {
        const Result<std::size_t> count = stream.read(buffer);
        if (!count) {
            return std::unexpected(count.error());
        }
        if (*count == 0) {
            return data;
        }
        const auto bytes = std::as_bytes(std::span(buffer).first(*count));
        data.insert(data.end(), bytes.begin(), bytes.end());
        if (data.size() > longestValue) {
            return std::unexpected(platform::posixError(EFBIG));
        }
    }
}

std::string shownOn(const Output& output, std::string_view name) {
    return output.isTerminal() ? terminalLine(name) : platform::shownText(name);
}

void printText(const platform::URL& url, const ItemExplanations& explanations, Output& output) {
    output.write("Attributes of " + shownOn(output, url.path()));
    output.write(explanations.attributes.empty() && explanations.failures.empty() ? ": none\n" : ":\n");
    output.write(explanationLines(explanations, output.isTerminal()));
}

void printJson(const platform::URL& url, const ItemExplanations& explanations, Output& output) {
    const auto writeAll = [](JsonWriter& json, const std::vector<attributes::Explanation>& all) {
        json.beginArray();
        for (const attributes::Explanation& explanation : all) {
            writeExplanationJson(json, explanation);
        }
        json.endArray();
    };
    const std::string path = url.path();
    JsonWriter json(output, output.isTerminal());
    json.beginObject();
    json.key("path").text(path);
    json.key("pathBytes");
    platform::isValidUtf8(path) ? json.null() : json.hex(std::as_bytes(std::span(path)));
    json.key("facts");
    explanations.facts ? writeExplanationJson(json, explanations.facts->words)
                       : static_cast<void>(json.null());
    json.key("areOfLink").boolean(explanations.areOfLink);
    json.key("attributes");
    writeAll(json, explanations.attributes);
    json.key("verified");
    explanations.verified ? writeVerifiedJson(json, *explanations.verified) : static_cast<void>(json.null());
    json.key("companionPath");
    explanations.companion ? json.text(explanations.companion->path) : json.null();
    json.key("companionAttributes");
    writeAll(
        json,
        explanations.companion ? explanations.companion->attributes : std::vector<attributes::Explanation>());
    json.key("failures").beginArray();
    for (const std::string& failure : explanations.failures) {
        json.text(failure);
    }
    json.endArray().endObject();
    json.finish();
    output.write("\n");
}

} // namespace

std::string explanationLines(const ItemExplanations& explanations, bool isTerminal) {
    std::string lines;
    if (explanations.areOfLink) {
        lines += "The target of this link cannot be reached; these are attributes of the link itself.\n";
    }
    for (const attributes::Explanation& explanation : explanations.attributes) {
        lines += "\n" + attributeLines(explanation, isTerminal);
    }
    if (explanations.facts) {
        lines += "\n" + factLines(*explanations.facts);
    }
    if (explanations.verified) {
        lines += "\n" + verifiedLines(*explanations.verified);
    }
    if (explanations.companion) {
        const std::string& path = explanations.companion->path;
        const std::string name = path.substr(path.rfind('/') + 1);
        lines += "\nIn the companion file " + (isTerminal ? terminalLine(name) : platform::shownText(name));
        lines += explanations.companion->attributes.empty() ? ": none\n" : ":\n";
        for (const attributes::Explanation& explanation : explanations.companion->attributes) {
            lines += "\n" + attributeLines(explanation, isTerminal);
        }
    }
    return lines;
}

ExitStatus AttributesCommand::run(Names& names, std::string_view source, bool json, std::size_t jobs) {
    const auto explain = [this, json](const std::string& name, NameResults& results) {
        explainNamed(name, json, results);
    };
    const NameWork work{
        .work = explain,
        .jobs = jobs,
        .namesAtOnce = progress_ != nullptr ? 1 : itemsAtOnce, // files to read may be large
        .separator = json ? "" : "\n",
        .source = source};
    platform::OutputStream& errors = progress_ != nullptr ? *progress_ : sources_.standardError;
    return finished(output_, errors, workOnNames(names, work, output_, errors));
}

void AttributesCommand::explainNamed(const std::string& name, bool json, NameResults& results) const {
    const Result<platform::URL> url = urlOfName(name, currentFolder_);
    const auto attributes = url ? sources_.files.fileManager.attributesOfItemAtPath(url->path())
                                : Result<platform::Dictionary>(std::unexpected(url.error()));
    if (!attributes) {
        results.complain(name.empty() ? "''" : name, attributes.error().localizedDescription());
        return;
    }
    ItemExplanations explanations = details::explainItem(*url, *attributes, explanationSources(sources_));
    if (progress_ != nullptr) {
        details::verifyChecksums(explanations, url->path(), sources_.contents, progress_->of(name));
    }
    if (json) {
        printJson(*url, explanations, results.output());
    } else {
        printText(*url, explanations, results.output());
    }
    for (const std::string& failure : explanations.failures) {
        results.complain(name, failure);
    }
}

ExitStatus AttributesCommand::run(const AttributesExplainRequest& request) {
    Result<Data> value = Data();
    if (request.hex) {
        auto data = dataOfHex(*request.hex);
        if (!data) {
            complainOf("--hex", "not pairs of hexadecimal digits");
            return ExitStatus::failure;
        }
        value = *std::move(data);
    } else if (request.valueFile == "-") {
        value = dataInStream(sources_.standardInput);
    } else {
        const auto stream = sources_.openForReading(*request.valueFile);
        value = stream ? dataInStream(**stream) : std::unexpected(stream.error());
    }
    if (!value) {
        complainOf(
            request.valueFile == "-" ? "standard input" : *request.valueFile,
            value.error().localizedDescription());
        return ExitStatus::failure;
    }
    const attributes::Explanation explanation = attributes::explain(request.name, *value);
    if (request.json) {
        JsonWriter json(output_, output_.isTerminal());
        writeExplanationJson(json, explanation);
        json.finish();
        output_.write("\n");
    } else {
        output_.write(attributeLines(explanation, output_.isTerminal()));
    }
    return finished(output_, sources_.standardError, ExitStatus::success);
}

void AttributesCommand::complainOf(std::string_view name, std::string_view reason) {
    complain(sources_.standardError, std::string(name).append(": ").append(reason));
}

} // namespace tolvane::cli
