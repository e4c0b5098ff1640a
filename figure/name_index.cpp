#include "figure/name_index.h"

#include <cstring>
#include <vector>

namespace quillon {

namespace {

const int kSlotCount = 2048; // a power of two, at most a third in use
const int kMaxNameLength = 64;
const int kEmpty = -1;

struct Slot {
    quint32 hash;
    int id; // kEmpty: free
};

struct NameIndex {
    std::vector<QString> texts; // by id
    std::vector<Slot> slots_; // open addressing, next slot on a collision
    std::vector<int> idOfBone[kFigureKindCount]; // by bone number
    std::vector<int> idOfControl[kFigureKindCount]; // by control number
};

} // namespace

// Four characters a step, each multiplied by a factor of its place; the products do not wait for
// each other. The upper half depends on every character.
static quint32 hashOf(const QChar* at, int length)
{
    const quint64 kFirstFactor = 0x9e3779b97f4a7c15ull, kFactorStep = 0xbf58476d1ce4e5b8ull;
    int left = length;
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

static bool isText(const QString& text, const QChar* name, int length)
{
    return text.size() == length
        && std::memcmp(text.constData(), name, size_t(length) * sizeof(QChar)) == 0;
}

static int find(const NameIndex& index, const QChar* name, int length)
{
    const quint32 hash = hashOf(name, length);
    for (quint32 i = hash;; ++i) {
        const Slot& slot = index.slots_[i % kSlotCount];
        if (slot.id == kEmpty || (slot.hash == hash && isText(index.texts[slot.id], name, length)))
            return slot.id;
    }
}

static int addName(NameIndex* index, const char* text)
{
    const QString name = QLatin1String(text);
    Q_ASSERT_X(name.size() <= kMaxNameLength, "name_index", "a name too long for its bytes");
    const int known = find(*index, name.constData(), name.size());
    if (known != kEmpty)
        return known;
    const quint32 hash = hashOf(name.constData(), name.size());
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
    for (int kind = 0; kind < kFigureKindCount; ++kind) {
        for (const char* name : modelFor(FigureKind(kind)).bones)
            index.idOfBone[kind].push_back(addName(&index, name));
        for (const char* name : modelFor(FigureKind(kind)).controls)
            index.idOfControl[kind].push_back(addName(&index, name));
    }
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
    return find(theIndex(), name.constData(), name.size());
}

int nameIdOfBytes(const char* begin, const char* end)
{
    QChar name[kMaxNameLength];
    int length = 0;
    for (const char* at = begin; at < end; ++at) {
        if (*at == '\n')
            continue;
        if (length == kMaxNameLength)
            return kEmpty;
        name[length++] = QLatin1Char(*at);
    }
    return find(theIndex(), name, length);
}

const QString& nameText(int id)
{
    return theIndex().texts[id];
}

int boneId(const FigureModel& model, int boneNumber)
{
    return theIndex().idOfBone[int(model.kind)][boneNumber];
}

int controlId(const FigureModel& model, int controlNumber)
{
    return theIndex().idOfControl[int(model.kind)][controlNumber];
}

} // namespace quillon
