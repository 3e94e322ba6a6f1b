#include "files/Checksum.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include <fmt/format.h>
#include <nettle/nettle-meta.h>
#include <xxhash.h>

namespace zonstory {

class Hasher::Algorithm {
public:
    virtual ~Algorithm() = default;
    virtual void Add(std::string_view bytes) = 0;
    virtual std::vector<std::uint8_t> Finish() = 0;
};

namespace {

class NettleHash : public Hasher::Algorithm {
public:
    explicit NettleHash(const nettle_hash& hash)
        : mHash(hash), mContext(std::make_unique<std::byte[]>(hash.context_size)) {
        mHash.init(mContext.get());
    }

    void Add(std::string_view bytes) override {
        mHash.update(mContext.get(), bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    }

    std::vector<std::uint8_t> Finish() override {
        std::vector<std::uint8_t> digest(mHash.digest_size);
        mHash.digest(mContext.get(), digest.size(), digest.data());
        return digest;
    }

private:
    const nettle_hash& mHash;
    std::unique_ptr<std::byte[]> mContext;
};

class XXH64Hash : public Hasher::Algorithm {
public:
    XXH64Hash() : mState(XXH64_createState(), &XXH64_freeState) { XXH64_reset(mState.get(), 0); }

    void Add(std::string_view bytes) override { XXH64_update(mState.get(), bytes.data(), bytes.size()); }

    std::vector<std::uint8_t> Finish() override {
        XXH64_canonical_t bytes{};
        XXH64_canonicalFromHash(&bytes, XXH64_digest(mState.get()));
        return {std::begin(bytes.digest), std::end(bytes.digest)};
    }

private:
    std::unique_ptr<XXH64_state_t, decltype(&XXH64_freeState)> mState;
};

class XXH128Hash : public Hasher::Algorithm {
public:
    XXH128Hash() : mState(XXH3_createState(), &XXH3_freeState) { XXH3_128bits_reset(mState.get()); }

    void Add(std::string_view bytes) override { XXH3_128bits_update(mState.get(), bytes.data(), bytes.size()); }

    std::vector<std::uint8_t> Finish() override {
        XXH128_canonical_t bytes{};
        XXH128_canonicalFromHash(&bytes, XXH3_128bits_digest(mState.get()));
        return {std::begin(bytes.digest), std::end(bytes.digest)};
    }

private:
    std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> mState;
};

std::unique_ptr<Hasher::Algorithm> MakeAlgorithm(HashKind kind) {
    switch (kind) {
    case HashKind::MD5:
        return std::make_unique<NettleHash>(nettle_md5);
    case HashKind::SHA1:
        return std::make_unique<NettleHash>(nettle_sha1);
    case HashKind::SHA256:
        return std::make_unique<NettleHash>(nettle_sha256);
    case HashKind::XXH64:
        return std::make_unique<XXH64Hash>();
    case HashKind::XXH128:
        break;
    }
    return std::make_unique<XXH128Hash>();
}

} // namespace

const char* HashName(HashKind kind) {
    switch (kind) {
    case HashKind::MD5:
        return "md5";
    case HashKind::SHA1:
        return "sha1";
    case HashKind::SHA256:
        return "sha256";
    case HashKind::XXH64:
        return "xxh64";
    case HashKind::XXH128:
        break;
    }
    return "xxh128";
}

std::optional<HashKind> HashNamed(std::string_view name) {
    for (const HashKind kind : kHashKinds) {
        if (name == HashName(kind)) {
            return kind;
        }
    }
    return std::nullopt;
}

Hasher::Hasher(HashKind kind) : mKind(kind), mAlgorithm(MakeAlgorithm(kind)) {}

Hasher::Hasher(Hasher&& other) noexcept = default;

Hasher::~Hasher() = default;

void Hasher::Add(std::string_view bytes) {
    mAlgorithm->Add(bytes);
}

std::string Hasher::Finish() {
    std::string text = HashName(mKind);
    text += ':';
    for (const std::uint8_t byte : mAlgorithm->Finish()) {
        text += fmt::format("{:02x}", byte);
    }
    return text;
}

std::optional<HashKind> KindOfChecksum(std::string_view checksum) {
    const std::size_t colon = checksum.find(':');
    return colon == std::string_view::npos ? std::nullopt : HashNamed(checksum.substr(0, colon));
}

} // namespace zonstory
