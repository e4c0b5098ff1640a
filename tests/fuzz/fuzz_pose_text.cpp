// The entries of a pose text: their channels, names and values, against the literal searches.
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

#include "posefile/pose_text.h"
#include "reference/pose_reader_reference.h"

using namespace quillon;

static void checkEntry(const TextSpan& entry, const QString& literal)
{
    FUZZ_CHECK(plainName(entry) == literal);
    const int channel = reference::channelOf(literal);
    FUZZ_CHECK(channelOf(entry) == channel);
    FUZZ_CHECK(channelOf(literal) == channel);
    const QString name = reference::nodeNameOf(literal);
    FUZZ_CHECK(plainName(nodeNameOf(entry)) == name);
    FUZZ_CHECK(nodeNameOf(literal) == name);
    FUZZ_CHECK(isRootName(nodeNameOf(entry)) == (name == QLatin1String("root")));
    const float value = reference::valueOf(literal);
    FUZZ_CHECK(fuzz::sameNumber(valueOf(entry), value));
    FUZZ_CHECK(fuzz::sameNumber(valueOf(literal), value));
}

QUILLON_FUZZ_TARGET(pose_text)
{
    reference::setPoseText(input.copy());
    setPoseText(input.bytes, input.count);
    TextSpan entry;
    while (nextEntry(&entry))
        checkEntry(entry, reference::nextEntry());
    FUZZ_CHECK(reference::nextEntry().isEmpty());
    setPoseText(nullptr, 0);
}
