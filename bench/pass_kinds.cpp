#include "bench/pass_kinds.h"

#include <fstream>

namespace quillon {
namespace bench {

using namespace reference;

static const int kCentres = 400;

static std::vector<Signature> randomCentres()
{
    Dice dice(400);
    std::vector<Signature> centres(kCentres);
    for (Signature& centre : centres)
        centre = randomSignature(&dice);
    return centres;
}

static Signature identitySignature()
{
    Signature signature;
    for (Quat& q : signature.slot)
        q = Quat {0, 0, 0, 1};
    return signature;
}

template <typename Value> static Value read(std::ifstream* file)
{
    Value value = {};
    file->read(reinterpret_cast<char*>(&value), sizeof value);
    return value;
}

// The signatures of a pose index file, which is little-endian as the machines that run this.
static std::vector<Signature> indexSignatures(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<Signature> signatures;
    read<std::int32_t>(&file); // version
    for (std::int32_t left = read<std::int32_t>(&file); left > 0 && file; --left) {
        file.ignore(read<std::int32_t>(&file)); // path
        file.ignore(8); // hash, figure code
        Signature signature;
        for (Quat& q : signature.slot) {
            for (double* each : {&q.x, &q.y, &q.z, &q.w})
                *each = double(read<float>(&file));
        }
        if (read<char>(&file) && file)
            signatures.push_back(signature);
    }
    return signatures;
}

std::vector<PassKind> passKinds(const char* indexPath)
{
    const std::vector<Signature> centres = randomCentres(), one(1, identitySignature());
    std::vector<PassKind> kinds
        = {{"random", {}, 0}, {"clusters 0.18", centres, 0.18}, {"clusters 0.1", centres, 0.1}};
    const std::vector<Signature> real
        = indexPath ? indexSignatures(indexPath) : std::vector<Signature>();
    if (!real.empty()) {
        kinds.push_back({"index 0.18", real, 0.18});
        kinds.push_back({"index 0.1", real, 0.1});
    }
    kinds.push_back({"one cluster 0.14", one, 0.14});
    kinds.push_back({"one cluster 0.1", one, 0.1});
    kinds.push_back({"one cluster 0.05", one, 0.05});
    kinds.push_back({"one cluster 0.02", one, 0.02});
    return kinds;
}

PassTable tableOf(const PassKind& kind, int count)
{
    Dice dice {std::uint64_t(count)};
    return kind.centres.empty() ? randomTable(count, &dice)
                                : clusteredTable(count, kind.centres, kind.noise, &dice);
}

} // namespace bench
} // namespace quillon
