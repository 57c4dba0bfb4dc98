#include "containers/XmlWalk.h"

#include "containers/TextRuns.h"
#include "platform/propertylist/ExpatOffset.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <expat.h>

namespace tolvane::containers {

namespace {

constexpr std::size_t deepestElement = 256;

struct OpenElement {
    std::string name;
    std::size_t index = 0; ///< Among the elements of this name within the same one.
    std::map<std::string, std::size_t, std::less<>> counts; ///< Of the elements within, by name.
    std::optional<std::string> source;
    std::string text;
    bool isTooLong = false;
};

class XmlCollector {
public:
    explicit XmlCollector(Collector& collector) : collector_(collector), parser_(XML_ParserCreate(nullptr)) {
        open_.emplace_back();
    }

    void run(std::string_view text) {
        if (parser_ == nullptr) {
            collector_.complain("The document cannot be read: out of memory.");
            return;
        }
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(parser_.get(), &started, &ended);
        XML_SetCharacterDataHandler(parser_.get(), &characters);
        XML_SetEntityDeclHandler(parser_.get(), &declared);
        while (!text.empty() && !isStopped_) {
            constexpr std::size_t pieceLength = std::size_t{1} << 20U;
            const std::string_view piece = text.substr(0, pieceLength);
            text.remove_prefix(piece.size());
            if (XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), text.empty() ? 1 : 0)
                == XML_STATUS_ERROR) {
                const std::size_t offset = platform::expatOffset(parser_.get());
                collector_.complain(
                    "The document cannot be read further: "
                    + std::string(XML_ErrorString(XML_GetErrorCode(parser_.get()))) + " at byte "
                    + std::to_string(offset) + ".");
                return;
            }
        }
    }

private:
    static void started(void* self, const XML_Char* name, const XML_Char** attributes) {
        static_cast<XmlCollector*>(self)->start(name, attributes);
    }
    static void ended(void* self, const XML_Char* /*name*/) { static_cast<XmlCollector*>(self)->end(); }
    static void characters(void* self, const XML_Char* text, int length) {
        static_cast<XmlCollector*>(self)->add({text, static_cast<std::size_t>(length)});
    }
    static void declared(
        void* self,
        const XML_Char* /*name*/,
        int /*isParameter*/,
        const XML_Char* /*value*/,
        int /*length*/,
        const XML_Char* /*base*/,
        const XML_Char* /*system*/,
        const XML_Char* /*public*/,
        const XML_Char* /*notation*/) {
        auto& collector = *static_cast<XmlCollector*>(self);
        collector.stop("a declared entity");
    }

    void start(std::string_view name, const XML_Char** attributes) {
        if (open_.size() > deepestElement) {
            stop("elements more than 256 deep");
            return;
        }
        OpenElement element;
        element.name = name;
        element.index = open_.back().counts[element.name]++;
        for (; *attributes != nullptr; attributes += 2) {
            if (std::string_view(attributes[0]) == "src") {
                element.source = attributes[1];
            }
        }
        open_.push_back(std::move(element));
    }

    void add(std::string_view text) {
        OpenElement& element = open_.back();
        if (element.text.size() + text.size() > longestXmlText) {
            element.isTooLong = true;
            element.text.clear();
        } else if (!element.isTooLong) {
            element.text += text;
        }
    }

    void end() {
        const OpenElement& element = open_.back();
        if (element.isTooLong) {
            collector_.complain("The text of " + where() + " is too long and was left out.");
        } else if (const auto bytes = bytesOfDigits(element.text);
                   bytes && isLikeFinding(*bytes) && !collector_.isFull()) {
            Label label;
            for (auto around = open_.rbegin(); around != open_.rend() && !label.neighbour; ++around) {
                label.neighbour = around->source;
            }
            collector_.add(*bytes, where(), label);
        }
        open_.pop_back();
    }

    std::string where() const {
        std::string steps;
        for (auto element = open_.begin() + 1; element != open_.end(); ++element) {
            steps += "/" + element->name + "[" + std::to_string(element->index) + "]";
        }
        return steps;
    }

    void stop(std::string_view reason) {
        isStopped_ = true;
        XML_StopParser(parser_.get(), XML_FALSE);
        collector_.complain("The document is not read further: " + std::string(reason) + ".");
    }

    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    Collector& collector_;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> parser_;
    std::vector<OpenElement> open_; ///< The first is around the document.
    bool isStopped_ = false;
};

} // namespace

void collectFromXml(std::string_view text, Collector& collector) {
    XmlCollector(collector).run(text);
}

} // namespace tolvane::containers
