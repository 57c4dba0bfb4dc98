#include "details/AttributeWords.h"

#include "attributes/Answer.h"
#include "platform/services/TextSize.h"

#include <utility>

namespace tolvane::details {

namespace {

constexpr std::string_view pageKey = "attributesInWords";

} // namespace

AttributeWords::AttributeWords(
    const Controls& controls, WordSources sources, platform::UserDefaults& defaults)
    : controls_(controls)
    , sources_(std::move(sources))
    , defaults_(defaults) {
    using platform::ButtonState;
    controls_.inWords.setState(defaults_.boolForKey(pageKey) ? ButtonState::on : ButtonState::off);
    page_ = controls_.inWords.observe([this] {
        defaults_.setBool(controls_.inWords.state() == ButtonState::on, pageKey);
        load();
    });
    selection_ = controls_.table.observeSelection([this] { showSelected(); });
    bytes_ = controls_.bytes.observe([this] { showSelected(); });
}

void AttributeWords::setItem(
    const platform::URL& url, const platform::Dictionary& attributes, double fontSize) {
    verification_.reset();
    url_ = url;
    attributes_ = attributes;
    fontSize_ = fontSize;
    rows_ = nullptr;
    load();
}

void AttributeWords::setFontSize(double size) {
    fontSize_ = size;
    showSelected();
}

void AttributeWords::load() {
    if (rows_ || !url_ || controls_.inWords.state() != platform::ButtonState::on) {
        return;
    }
    rows_ = std::make_shared<const AttributeRows>(*url_, attributes_, sources_.explanations);
    verified_.clear();
    progress_.clear();
    controls_.table.setRows(rows_);
    if (rows_->rowCount() > 0) {
        controls_.table.selectRow(0);
    } else {
        showSelected();
    }
}

std::string AttributeWords::checksumsText() const {
    std::string text;
    for (const verification::Verified& verified : verified_) {
        text += attributes::visibleText(verification::sentenceAbout(verified)) + "\n";
    }
    if (verified_.empty()) {
        for (const attributes::StoredChecksum& checksum : rows_->checksums()) {
            text.append(checksum.algorithm).append(" in ").append(attributes::visibleText(checksum.name));
            text += ": not compared with the content yet\n";
        }
    }
    return text + progress_;
}

void AttributeWords::showSelected() {
    platform::TextStorage* const storage = controls_.text.textStorage();
    if (storage == nullptr || !rows_) {
        return;
    }
    std::string text;
    if (const auto row = controls_.table.selectedRow(); row && *row < rows_->rowCount()) {
        text = rows_->words(*row);
        if (row == rows_->checksumsRow()) {
            text += checksumsText();
        }
        if (controls_.bytes.state() == platform::ButtonState::on) {
            text += rows_->bytes(*row);
        }
    }
    storage->setAttributedString({std::move(text), platform::outputStyle(fontSize_)});
}

bool AttributeWords::canVerify() const {
    return rows_ && !rows_->checksums().empty() && !isVerifying() && sources_.tasks != nullptr
           && controls_.inWords.state() == platform::ButtonState::on;
}

void AttributeWords::showProgress(std::string progress) {
    progress_ = std::move(progress);
    if (controls_.table.selectedRow() == rows_->checksumsRow()) {
        showSelected();
    }
}

void AttributeWords::verify() {
    if (!canVerify()) {
        return;
    }
    verified_.clear();
    controls_.table.selectRow(rows_->checksumsRow());
    const auto work = [this, checksums = rows_->checksums(), path = url_->path(),
                       contents = sources_.sharedContents](const platform::BackgroundLink& link) {
        constexpr std::uint64_t whole = 100;
        std::uint64_t last = 0;
        auto results = verification::verifyChecksums(
            checksums, path, *contents, [&](std::uint64_t done, std::uint64_t size) {
                const std::uint64_t percent = done >= size ? whole : done / (size / whole + 1);
                if (percent != std::exchange(last, percent) && percent != whole) {
                    link.deliver([this, percent] {
                        showProgress("\nReading the content: " + std::to_string(percent) + " %\n");
                    });
                }
                return !link.isCancelled();
            });
        link.deliver([this, results = std::move(results)] {
            verified_ = results;
            verification_.reset();
            showProgress({});
        });
    };
    verification_ = sources_.tasks->start(work);
    showProgress("\nReading the content …\n");
}

void AttributeWords::stopVerification() {
    if (std::exchange(verification_, nullptr)) {
        showProgress("\nStopped before the end of the content.\n");
    }
}

} // namespace tolvane::details
