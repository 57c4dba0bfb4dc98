#include "verification/ContentDigest.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <openssl/evp.h>
#include <zlib.h>

namespace tolvane::verification {

namespace {

class HashDigest final : public ContentDigest {
public:
    explicit HashDigest(const EVP_MD& method) : context_(EVP_MD_CTX_new(), &EVP_MD_CTX_free) {
        works_ = context_ != nullptr && EVP_DigestInit_ex(context_.get(), &method, nullptr) == 1;
    }

    bool works() const { return works_; }

    void add(std::span<const std::byte> bytes) override {
        works_ = works_ && EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()) == 1;
    }

    platform::Data finish() override {
        std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
        unsigned int length = 0;
        if (!works_ || EVP_DigestFinal_ex(context_.get(), digest.data(), &length) != 1) {
            return {};
        }
        const auto bytes = std::as_bytes(std::span(digest).first(length));
        return {bytes.begin(), bytes.end()};
    }

private:
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context_;
    bool works_ = false;
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
    const EVP_MD* (*method)();
};

constexpr std::array methods{Method{"MD5", &EVP_md5},           Method{"SHA-1", &EVP_sha1},
                             Method{"SHA-224", &EVP_sha224},    Method{"SHA-256", &EVP_sha256},
                             Method{"SHA-384", &EVP_sha384},    Method{"SHA-512", &EVP_sha512},
                             Method{"BLAKE2b", &EVP_blake2b512}};

} // namespace

std::unique_ptr<ContentDigest> digestFor(std::string_view algorithm, std::size_t length) {
    constexpr std::size_t crcLength = 4;
    if (algorithm == "CRC-32" && length == crcLength) {
        return std::make_unique<Crc32Digest>();
    }
    for (const Method& known : methods) {
        const EVP_MD* const method = known.algorithm == algorithm ? known.method() : nullptr;
        if (method != nullptr && std::cmp_equal(EVP_MD_get_size(method), length)) {
            auto digest = std::make_unique<HashDigest>(*method);
            return digest->works() ? std::move(digest) : nullptr;
        }
    }
    return nullptr;
}

} // namespace tolvane::verification
