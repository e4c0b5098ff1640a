// Reading of packed, plain and damaged files into a buffer of any size, against zlib asked for all
// at once. The first byte chooses the mode, the next two how much is to be read.
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

#include "ground/host_gzip.h"
#include "posefile/gzip_file.h"

#include <zlib.h>

using namespace quillon;

enum Mode { AsItIs, Packed, PackedAndDamaged, ModeCount };

static const int kGzipWindow = 15 + 16;
static const char kMagic = '\x1f';

// Unpacks one member of the file from *at on, as far as it can be; moves *at behind it. False at
// its damage, its cut or the end of the room.
static bool unpackMember(const QByteArray& file, int* at, QByteArray* room, int* used)
{
    z_stream stream = {};
    if (inflateInit2(&stream, kGzipWindow) != Z_OK)
        qFatal("no zlib");
    QByteArray rest = file.mid(*at);
    stream.next_in = reinterpret_cast<Bytef*>(rest.data());
    stream.avail_in = uInt(rest.size());
    stream.next_out = reinterpret_cast<Bytef*>(room->data() + *used);
    stream.avail_out = uInt(room->size() - *used);
    const int status = inflate(&stream, Z_NO_FLUSH);
    *at = file.size() - int(stream.avail_in);
    *used = room->size() - int(stream.avail_out);
    inflateEnd(&stream);
    return status == Z_STREAM_END && *used < room->size();
}

static QByteArray unpackedOrAsIs(const QByteArray& file, int maxBytes)
{
    QByteArray room(maxBytes, '\0');
    int at = 0, used = 0;
    while (at < file.size() && file.at(at) == kMagic && unpackMember(file, &at, &room, &used)) { }
    return used > 0 ? room.left(used) : file.left(maxBytes);
}

static QByteArray packed(const QByteArray& bytes)
{
    QBuffer out;
    FUZZ_CHECK(out.open(QIODevice::WriteOnly) && writePacked(&out, bytes));
    return out.data();
}

// Pairs of a place and a byte that is added there.
static QByteArray damaged(QByteArray file, fuzz::Input* input)
{
    for (int n = input->takeByte() % 4; n > 0; --n) {
        const int at = (input->takeByte() * 256 + input->takeByte()) % file.size();
        file[at] = char(file.at(at) + input->takeByte());
    }
    return file;
}

QUILLON_FUZZ_TARGET(gzip_file)
{
    const int mode = input.takeByte() % ModeCount;
    const int high = input.takeByte() % 32, maxBytes = high * 256 + input.takeByte();
    QByteArray file = input.copy();
    if (mode == Packed)
        file = packed(file);
    else if (mode == PackedAndDamaged) // its damage comes first and is packed as well
        file = damaged(packed(file), &input);
    const std::unique_ptr<char[]> buffer(new char[size_t(maxBytes)]);
    const int count = readUnpackedOrAsIs(fuzz::fileOf(file), buffer.get(), maxBytes);
    FUZZ_CHECK(QByteArray(buffer.get(), count) == unpackedOrAsIs(file, maxBytes));
    const QByteArray whole = input.copy().left(maxBytes);
    FUZZ_CHECK(mode != Packed || whole.isEmpty() || QByteArray(buffer.get(), count) == whole);
}
