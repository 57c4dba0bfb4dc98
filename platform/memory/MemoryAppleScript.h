#pragma once

#include "platform/AppleScript.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// Scripts that are not run but handed over: the texts of those that were to be run wait here, in that order,
/// for the program itself to do with them what it can.
class MemoryAppleScripts final : public AppleScripts {
public:
    std::unique_ptr<AppleScript> initWithSource(std::string_view source) override {
        return std::make_unique<Script>(handedOver_, source);
    }

    const std::vector<std::string>& handedOver() const { return *handedOver_; }

private:
    using Sources = std::shared_ptr<std::vector<std::string>>;

    class Script final : public AppleScript {
    public:
        Script(Sources handedOver, std::string_view source)
            : handedOver_(std::move(handedOver))
            , source_(source) {}

        Result<void> executeAndReturnError() override {
            handedOver_->push_back(source_);
            return {};
        }

    private:
        Sources handedOver_;
        std::string source_;
    };

    Sources handedOver_ = std::make_shared<std::vector<std::string>>();
};

} // namespace tolvane::platform
