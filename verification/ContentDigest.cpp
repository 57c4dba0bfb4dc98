#include "verification/ContentDigest.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <gcrypt.h>
#include <zlib.h>

namespace tolvane::verification {

namespace {

class HashDigest final : public ContentDigest {
public:
    explicit HashDigest(gcry_md_algos method) : handle_(opened(method), &gcry_md_close) {}

    bool works() const { return handle_ != nullptr; }

    void add(std::span<const std::byte> bytes) override {
        gcry_md_write(handle_.get(), bytes.data(), bytes.size());
    }

    platform::Data finish() override {
        const auto* digest = reinterpret_cast<const std::byte*>(gcry_md_read(handle_.get(), 0));
        return {digest, digest + gcry_md_get_algo_dlen(gcry_md_get_algo(handle_.get()))};
    }

private:
    /// Null where the system's policy does not permit the method.
    static gcry_md_hd_t opened(gcry_md_algos method) {
        // The library wants this before anything else, and from one thread.
        static const bool isReady = gcry_check_version(nullptr) != nullptr;
        gcry_md_hd_t handle = nullptr;
        return isReady && gcry_md_open(&handle, method, 0) == 0 ? handle : nullptr;
    }

    std::unique_ptr<gcry_md_handle, decltype(&gcry_md_close)> handle_;
};

class Crc32Digest final : public ContentDigest {
public:
    void add(std::span<const std::byte> bytes) override {
        if (bytes.empty()) {
            // A null pointer would start anew.
            return;
        }
        sum_ = crc32_z(sum_, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
    }

    platform::Data finish() override {
        platform::Data digest;
        for (unsigned shift = 32; shift > 0; shift -= 8) {
            digest.push_back(static_cast<std::byte>(sum_ >> (shift - 8) & 0xFFU));
        }
        return digest;
    }

private:
    uLong sum_ = crc32_z(0, nullptr, 0);
};

struct Method {
    std::string_view algorithm;
    gcry_md_algos number;
};

constexpr std::array methods{
    Method{"MD5", GCRY_MD_MD5},
    Method{"SHA-1", GCRY_MD_SHA1},
    Method{"SHA-224", GCRY_MD_SHA224},
    Method{"SHA-256", GCRY_MD_SHA256},
    Method{"SHA-384", GCRY_MD_SHA384},
    Method{"SHA-512", GCRY_MD_SHA512},
    Method{"BLAKE2b", GCRY_MD_BLAKE2B_512}};

} // namespace

std::unique_ptr<ContentDigest> digestFor(std::string_view algorithm, std::size_t length) {
    constexpr std::size_t crcLength = 4;
    if (algorithm == "CRC-32" && length == crcLength) {
        return std::make_unique<Crc32Digest>();
    }
    for (const Method& known : methods) {
        if (known.algorithm == algorithm && gcry_md_get_algo_dlen(known.number) == length) {
            auto digest = std::make_unique<HashDigest>(known.number);
            return digest->works() ? std::move(digest) : nullptr;
        }
    }
    return nullptr;
}

} // namespace tolvane::verification
