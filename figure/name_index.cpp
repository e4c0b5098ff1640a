#include "figure/name_index.h"

#include <cstring>
#include <vector>

namespace quillon {

namespace {

const int kFirstControlId = kBoneCount;
const int kSlotCount = 2048; // a power of two, at most a third in use
const int kEmpty = -1;

struct Slot {
    quint32 hash;
    int id; // kEmpty: free
};

struct NameIndex {
    std::vector<QString> texts; // by id
    std::vector<Slot> slots_; // open addressing, next slot on a collision
    int idOfControlG81[kControlCountG81];
};

} // namespace

// Four characters a step, each multiplied by a factor of its place; the products do not wait for
// each other. The upper half depends on every character.
static quint32 hashOf(const QString& name)
{
    const quint64 kFirstFactor = 0x9e3779b97f4a7c15ull, kFactorStep = 0xbf58476d1ce4e5b8ull;
    const QChar* at = name.constData();
    int left = name.size();
    quint64 factor = kFirstFactor; // stays odd
    quint64 sum = quint64(left) * kFirstFactor;
    for (; left >= 4; left -= 4, at += 4, factor += kFactorStep) {
        quint64 word;
        std::memcpy(&word, at, sizeof word);
        sum += word * factor;
    }
    for (; left > 0; --left, ++at, factor += kFactorStep)
        sum += at->unicode() * factor;
    return quint32(sum >> 32) ^ quint32(sum >> 53);
}

static int find(const NameIndex& index, const QString& name, quint32 hash)
{
    for (quint32 i = hash;; ++i) {
        const Slot& slot = index.slots_[i % kSlotCount];
        if (slot.id == kEmpty || (slot.hash == hash && index.texts[slot.id] == name))
            return slot.id;
    }
}

static int addName(NameIndex* index, const char* text)
{
    const QString name = QLatin1String(text);
    const quint32 hash = hashOf(name);
    const int known = find(*index, name, hash);
    if (known != kEmpty)
        return known;
    quint32 i = hash;
    while (index->slots_[i % kSlotCount].id != kEmpty)
        ++i;
    const Slot slot = {hash, int(index->texts.size())};
    index->slots_[i % kSlotCount] = slot;
    index->texts.push_back(name);
    return slot.id;
}

static NameIndex buildIndex()
{
    NameIndex index;
    const Slot empty = {0, kEmpty};
    index.slots_.assign(kSlotCount, empty);
    index.texts.reserve(kNameCount);
    for (const char* name : kBoneTable)
        addName(&index, name);
    for (const char* name : kBodyControlTableG8)
        addName(&index, name);
    for (int i = 0; i < kControlCountG81; ++i)
        index.idOfControlG81[i] = addName(&index, kBodyControlTableG81[i]);
    Q_ASSERT_X(int(index.texts.size()) == kNameCount, "name_index", "distinct names of the tables");
    return index;
}

static const NameIndex& theIndex()
{
    static const NameIndex index = buildIndex();
    return index;
}

int nameId(const QString& name)
{
    return find(theIndex(), name, hashOf(name));
}

const QString& nameText(int id)
{
    return theIndex().texts[id];
}

int controlId(bool genesis81, int controlNumber)
{
    return genesis81 ? theIndex().idOfControlG81[controlNumber] : kFirstControlId + controlNumber;
}

} // namespace quillon
