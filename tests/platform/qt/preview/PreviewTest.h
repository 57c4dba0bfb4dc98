#pragma once

#include "platform/posix/PosixFileContents.h"
#include "platform/qt/preview/DecoderProcess.h"
#include "platform/qt/preview/FactsView.h"
#include "tests/platform/qt/QtTest.h"
#include "tests/platform/qt/application/EventLoop.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <sys/stat.h>

namespace tolvane::tests {

class PreviewTest : public testing::Test {
protected:
    PreviewTest() { application(); }

    static platform::DecoderSettings realDecoder() {
        return {QStringLiteral(TOLVANE_BINARY_DIR "/tolvane-decoder"), std::chrono::seconds(60)};
    }

    /// A script in place of the decoder.
    platform::DecoderSettings scriptedDecoder(const std::string& script) const {
        const std::string path = folder.file("decoder.sh", "#!/bin/sh\n" + script + "\n");
        EXPECT_EQ(chmod(path.c_str(), 0755), 0);
        return {QString::fromStdString(path), std::chrono::seconds(60)};
    }

    TemporaryFolder folder;
};

/// The value of the fact with this label; empty if there is none.
inline std::string factIn(const std::vector<platform::Fact>& facts, const QString& label) {
    const auto found = std::ranges::find(facts, label, &platform::Fact::label);
    return found == facts.end() ? "" : found->value.toStdString();
}

/// The real files; counts openings and bytes.
class CountedFiles final : public platform::FileContents {
public:
    using Look = platform::FileAnswer<platform::ItemLook>;

    Look lookAtItem(const std::string& path) const override { return real_.lookAtItem(path); }
    Look lookAtTarget(const std::string& path) const override { return real_.lookAtTarget(path); }
    platform::FileAnswer<std::string> destinationOfSymbolicLink(const std::string& path) const override {
        return real_.destinationOfSymbolicLink(path);
    }
    platform::FileAnswer<std::shared_ptr<const platform::OpenedFile>> openForReading(
        const std::string& path) const override {
        ++counts_->opened;
        auto file = real_.openForReading(path);
        if (!file) {
            return std::unexpected(file.error());
        }
        return std::make_shared<const File>(*std::move(file), counts_);
    }
    platform::FileAnswer<void> visitFolder(
        const std::string& path, const EntryVisitor& visitor) const override {
        return real_.visitFolder(path, visitor);
    }

    int filesOpened() const { return counts_->opened; }
    std::uint64_t bytesRead() const { return counts_->bytes; }

private:
    struct Counts {
        std::atomic<int> opened = 0;
        std::atomic<std::uint64_t> bytes = 0;
    };

    class File final : public platform::OpenedFile {
    public:
        File(std::shared_ptr<const platform::OpenedFile> real, std::shared_ptr<Counts> counts)
            : real_(std::move(real))
            , counts_(std::move(counts)) {}

        platform::FileAnswer<std::uint64_t> size() const override { return real_->size(); }
        platform::FileAnswer<std::size_t> read(
            std::uint64_t offset, std::span<std::byte> room) const override {
            const auto length = real_->read(offset, room);
            counts_->bytes += length.value_or(0);
            return length;
        }

    private:
        std::shared_ptr<const platform::OpenedFile> real_;
        std::shared_ptr<Counts> counts_;
    };

    platform::PosixFileContents real_;
    std::shared_ptr<Counts> counts_ = std::make_shared<Counts>();
};

} // namespace tolvane::tests
