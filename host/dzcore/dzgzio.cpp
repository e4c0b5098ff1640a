#include "dzgzio.h"
#include "dzhostcalls.h"

#include <QByteArray>
#include <QFile>

#include <zlib.h>

#include <algorithm>

static const int kGzipWindow = 15 + 16; // largest window; 16: gzip header and trailer
static const int kMemLevel = 8; // zlib's default
static const qint64 kMaxPiece = 1 << 30; // zlib counts in unsigned int

struct DzGzIO::Private {
    QIODevice* device;
    int level;
    QByteArray buffer; // packed bytes on their way
    QByteArray ahead; // unpacked bytes that were needed to know whether there are any
    z_stream stream;
    bool openedDevice;
    bool streamOpen;
    bool ended; // no more unpacked bytes
    bool betweenMembers;
    int members; // complete ones
    QString failure;

    bool refill();
    bool startMember();
    qint64 unpack(char* out, qint64 size);
    void fillAhead();
    bool pack(int flush);
    bool flushBuffer();
    bool fail(const QString& what);
};

static void resetStream(z_stream* stream)
{
    stream->zalloc = Z_NULL;
    stream->zfree = Z_NULL;
    stream->opaque = Z_NULL;
    stream->next_in = Z_NULL;
    stream->avail_in = 0;
    stream->next_out = Z_NULL;
    stream->avail_out = 0;
    stream->total_out = 0;
    stream->msg = Z_NULL;
}

static Bytef* bytes(char* data)
{
    return reinterpret_cast<Bytef*>(data);
}

bool DzGzIO::Private::fail(const QString& what)
{
    if (failure.isEmpty())
        failure = what;
    ended = true;
    return false;
}

DzGzIO::DzGzIO(QIODevice* device, int compressionLevel, int bufferSize)
    : d(new Private)
{
    d->device = device;
    d->level = compressionLevel >= 0 && compressionLevel <= 9 ? compressionLevel : 6;
    d->buffer.resize(std::max(1, bufferSize));
    resetStream(&d->stream);
    d->openedDevice = d->streamOpen = d->ended = false;
    d->betweenMembers = true;
    d->members = 0;
}

DzGzIO::~DzGzIO()
{
    close();
    delete d;
}

bool DzGzIO::isSequential() const
{
    return true;
}

bool DzGzIO::hasFailed() const
{
    return !d->failure.isEmpty();
}

bool DzGzIO::open(OpenMode mode)
{
    const OpenMode way = mode & ReadWrite;
    if (DZ_HOST_CALL("gzOpen") || isOpen() || !d->device || (way != ReadOnly && way != WriteOnly)
        || (mode & Append))
        return false;
    const bool wasOpen = d->device->isOpen();
    if (wasOpen ? (d->device->openMode() & way) != way : !d->device->open(way)) {
        setErrorString(d->device->errorString());
        return false;
    }
    resetStream(&d->stream);
    const int status = way == ReadOnly ? inflateInit2(&d->stream, kGzipWindow)
                                       : deflateInit2(&d->stream, d->level, Z_DEFLATED, kGzipWindow,
                                           kMemLevel, Z_DEFAULT_STRATEGY);
    if (status != Z_OK) {
        if (!wasOpen)
            d->device->close();
        return false;
    }
    d->openedDevice = !wasOpen;
    d->streamOpen = true;
    d->ended = false;
    d->betweenMembers = true;
    d->members = 0;
    d->ahead.clear();
    d->failure.clear();
    if (way == WriteOnly) {
        d->stream.next_out = bytes(d->buffer.data());
        d->stream.avail_out = uInt(d->buffer.size());
    }
    return QIODevice::open(mode);
}

void DzGzIO::close()
{
    if (!isOpen())
        return;
    if (openMode() & WriteOnly) {
        if (d->failure.isEmpty())
            d->pack(Z_FINISH);
        QFile* file = qobject_cast<QFile*>(d->device);
        if (file && d->failure.isEmpty() && !file->flush())
            d->fail(file->errorString());
        deflateEnd(&d->stream);
    } else {
        inflateEnd(&d->stream);
    }
    d->streamOpen = false;
    QIODevice::close();
    if (d->openedDevice)
        d->device->close();
    d->ahead.clear();
    if (!d->failure.isEmpty())
        setErrorString(d->failure); // closing has cleared it
}

// ---- reading ----------------------------------------------------------------------------------

bool DzGzIO::Private::refill() // false: the input is over
{
    const qint64 got = device->read(buffer.data(), buffer.size());
    if (got <= 0)
        return false;
    stream.next_in = bytes(buffer.data());
    stream.avail_in = uInt(got);
    return true;
}

// False when what comes next is no member. Behind a complete one that is the end and no error.
bool DzGzIO::Private::startMember()
{
    static const Bytef kMagic = 0x1f;
    if (stream.next_in[0] == kMagic) {
        betweenMembers = false;
        return true;
    }
    if (members == 0)
        return fail(tr("The data is not in gzip format"));
    ended = true;
    return false;
}

qint64 DzGzIO::Private::unpack(char* out, qint64 size)
{
    const qint64 wanted = std::min(size, kMaxPiece);
    stream.next_out = bytes(out);
    stream.avail_out = uInt(wanted);
    while (stream.avail_out > 0 && !ended) {
        if (stream.avail_in == 0 && !refill()) {
            ended = true;
            if (!betweenMembers || members == 0)
                fail(tr("The gzip data ends too early"));
            break;
        }
        if (betweenMembers && !startMember())
            break;
        const int status = inflate(&stream, Z_NO_FLUSH);
        if (status == Z_STREAM_END) {
            ++members;
            betweenMembers = true;
            inflateReset(&stream);
        } else if (status != Z_OK && status != Z_BUF_ERROR) {
            fail(QString::fromLatin1(stream.msg ? stream.msg : "The gzip data is damaged"));
        }
    }
    return wanted - qint64(stream.avail_out);
}

void DzGzIO::Private::fillAhead()
{
    static const int kAheadBytes = 256;
    if (!ahead.isEmpty() || ended)
        return;
    ahead.resize(kAheadBytes);
    ahead.resize(int(unpack(ahead.data(), kAheadBytes)));
}

qint64 DzGzIO::readData(char* data, qint64 maxSize)
{
    if (DZ_HOST_CALL("gzRead"))
        return -1;
    const int old = int(std::min(qint64(d->ahead.size()), maxSize));
    std::copy(d->ahead.constData(), d->ahead.constData() + old, data);
    d->ahead.remove(0, old);
    qint64 got = old;
    while (got < maxSize && !d->ended)
        got += d->unpack(data + got, maxSize - got);
    if (got > 0 || maxSize == 0)
        return got;
    if (d->failure.isEmpty())
        return 0; // the regular end
    setErrorString(d->failure);
    return -1;
}

qint64 DzGzIO::bytesAvailable() const
{
    const qint64 buffered = QIODevice::bytesAvailable();
    if (!isReadable())
        return buffered;
    if (buffered == 0)
        d->fillAhead();
    return buffered + d->ahead.size();
}

bool DzGzIO::atEnd() const
{
    return !isReadable() || bytesAvailable() == 0;
}

// ---- writing ----------------------------------------------------------------------------------

bool DzGzIO::Private::flushBuffer()
{
    const char* from = buffer.constData();
    qint64 left = buffer.size() - qint64(stream.avail_out);
    while (left > 0) {
        const qint64 put = device->write(from, left);
        if (put <= 0)
            return fail(device->errorString());
        from += put;
        left -= put;
    }
    stream.next_out = bytes(buffer.data());
    stream.avail_out = uInt(buffer.size());
    return true;
}

bool DzGzIO::Private::pack(int flush) // the input set in the stream; Z_FINISH: and the trailer
{
    int status = Z_OK;
    while (stream.avail_in > 0 || (flush == Z_FINISH && status != Z_STREAM_END)) {
        status = deflate(&stream, flush);
        if (status == Z_STREAM_ERROR)
            return fail(tr("The data cannot be compressed"));
        if ((stream.avail_out == 0 || status == Z_STREAM_END) && !flushBuffer())
            return false;
    }
    return true;
}

qint64 DzGzIO::writeData(const char* data, qint64 size)
{
    if (DZ_HOST_CALL("gzWrite")) {
        d->fail(tr("The data cannot be written"));
        setErrorString(d->failure);
        return -1;
    }
    qint64 done = 0;
    while (done < size && d->failure.isEmpty()) {
        const qint64 piece = std::min(size - done, kMaxPiece);
        d->stream.next_in = bytes(const_cast<char*>(data + done));
        d->stream.avail_in = uInt(piece);
        if (d->pack(Z_NO_FLUSH))
            done += piece;
    }
    if (d->failure.isEmpty())
        return size;
    setErrorString(d->failure);
    return -1;
}
