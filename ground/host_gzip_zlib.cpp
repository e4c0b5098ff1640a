#include "ground/host_gzip.h"

#include <QBuffer>
#include <QByteArray>

#include <zlib.h>

#include <algorithm>
#include <cstring>

namespace quillon {

static const int kLevel = 6;
static const int kMemLevel = 8; // zlib's default
static const int kGzipWindow = 15 + 16; // largest window; 16: gzip header and trailer
static const int kBufferBytes = 65536;
static const unsigned char kMagic = 0x1f;

namespace {

// What is unpacked of a device, from where it stands.
class Unpacker {
public:
    explicit Unpacker(QIODevice* device)
        : m_device(device)
        , m_packed(kBufferBytes, '\0')
    {
        std::memset(&m_stream, 0, sizeof m_stream);
        m_isOver = inflateInit2(&m_stream, kGzipWindow) != Z_OK;
        m_isSound = !m_isOver;
    }
    ~Unpacker()
    {
        inflateEnd(&m_stream);
    }
    int read(char* out, int maxBytes);
    // Up to here nothing was damaged, cut or no gzip.
    bool isSound() const
    {
        return m_isSound;
    }

private:
    Unpacker(const Unpacker&);
    Unpacker& operator=(const Unpacker&);
    bool hasMore();
    void end(bool sound)
    {
        m_isOver = true;
        m_isSound = sound;
    }

    QIODevice* m_device;
    QByteArray m_packed;
    z_stream m_stream;
    bool m_inMember = false;
    bool m_isOver, m_isSound;
    int m_members = 0; // complete ones
};

} // namespace

static Bytef* zlibBytes(char* bytes)
{
    return reinterpret_cast<Bytef*>(bytes);
}

// False: what follows is the end, or no further member.
bool Unpacker::hasMore()
{
    if (m_stream.avail_in == 0) {
        const qint64 got = m_device->read(m_packed.data(), m_packed.size());
        m_stream.next_in = zlibBytes(m_packed.data());
        m_stream.avail_in = uInt(std::max<qint64>(got, 0));
    }
    const bool startsMember = m_stream.avail_in > 0 && *m_stream.next_in == kMagic;
    if (m_inMember ? m_stream.avail_in > 0 : startsMember) {
        m_inMember = true;
        return true;
    }
    end(!m_inMember && m_members > 0);
    return false;
}

int Unpacker::read(char* out, int maxBytes)
{
    m_stream.next_out = zlibBytes(out);
    m_stream.avail_out = uInt(maxBytes);
    while (!m_isOver && m_stream.avail_out > 0 && hasMore()) {
        const int status = inflate(&m_stream, Z_NO_FLUSH);
        if (status == Z_STREAM_END) {
            ++m_members;
            m_inMember = false;
            inflateReset(&m_stream);
        } else if (status != Z_OK && status != Z_BUF_ERROR) {
            end(false);
        }
    }
    return maxBytes - int(m_stream.avail_out);
}

int readPacked(QIODevice* device, char* buffer, int maxBytes)
{
    return Unpacker(device).read(buffer, maxBytes);
}

bool unpackBytes(const QByteArray& packed, int maxBytes, QByteArray* bytes)
{
    QBuffer buffer;
    buffer.setData(packed);
    buffer.open(QIODevice::ReadOnly);
    Unpacker unpacker(&buffer);
    QByteArray piece(kBufferBytes, '\0');
    int got = unpacker.read(piece.data(), piece.size());
    while (got > 0 && bytes->size() + got <= maxBytes) {
        bytes->append(piece.constData(), got);
        got = unpacker.read(piece.data(), piece.size());
    }
    return got == 0 && unpacker.isSound();
}

bool writePacked(QIODevice* device, const QByteArray& bytes)
{
    z_stream stream;
    std::memset(&stream, 0, sizeof stream);
    if (deflateInit2(&stream, kLevel, Z_DEFLATED, kGzipWindow, kMemLevel, Z_DEFAULT_STRATEGY)
        != Z_OK)
        return false;
    stream.next_in = zlibBytes(const_cast<char*>(bytes.constData())); // zlib only reads it
    stream.avail_in = uInt(bytes.size());
    QByteArray piece(kBufferBytes, '\0');
    int status = Z_OK;
    bool taken = true;
    while (status == Z_OK && taken) {
        stream.next_out = zlibBytes(piece.data());
        stream.avail_out = uInt(piece.size());
        status = deflate(&stream, Z_FINISH);
        const qint64 size = piece.size() - qint64(stream.avail_out);
        taken = device->write(piece.constData(), size) == size;
    }
    deflateEnd(&stream);
    return taken && status == Z_STREAM_END;
}

} // namespace quillon
