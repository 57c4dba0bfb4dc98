#pragma once

#include "platform/services/AppleScript.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// Keeps the texts of the scripts that were to be run, in that order, and runs none.
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
