#pragma once

#include "tests/support/ResolverWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace tolvane::tests {

/// A test of a resolver window that is open.
class OpenResolver : public testing::Test, public ResolverWindow {
protected:
    OpenResolver() { open(); }

    const platform::AttributedString& styledInput() const {
        return controller().inputTextbox->textStorage()->attributedString();
    }
    const platform::AttributedString& styledOutput() const {
        return controller().outputTextbox->textStorage()->attributedString();
    }
    const std::string& status() const { return window().status(); }

    bool isOffered(std::string_view selector) const { return controller().isActionEnabled(selector); }
    void setPathText(const char* text) const { controller().filePathTextbox->setStringValue(text); }

    /// A controller in no window, without outlets.
    std::shared_ptr<resolver::TRViewController> unconnected() {
        return resolver::TRViewController::initWithCoder({}, resolverSources());
    }
};

} // namespace tolvane::tests
