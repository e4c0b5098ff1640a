#include "ground/dat_file.h"

#include "ground/plain_file.h"
#include "ground/whole_file.h"

#include <QFile>

#include <cstring>

#if Q_BYTE_ORDER != Q_LITTLE_ENDIAN
#error "the .dat files hold values as they lie in the memory of a little-endian machine"
#endif

namespace quillon {

DatReader::DatReader(const QString& path)
    : m_at(0)
{
    QFile file(path);
    m_open = openPlainFile(&file, QIODevice::ReadOnly);
    m_whole = m_open && readAllOf(&file, kLargestDatFile, &m_bytes);
}

bool DatReader::isOpen() const
{
    return m_open;
}

bool DatReader::isWhole() const
{
    return m_whole;
}

qint64 DatReader::bytesLeft() const
{
    return m_bytes.size() - m_at;
}

const char* DatReader::take(int bytes, int* taken)
{
    *taken = qMin(bytes, m_bytes.size() - m_at);
    m_at += *taken;
    return m_bytes.constData() + m_at - *taken;
}

void DatReader::read(void* field, int bytes)
{
    int taken;
    const char* from = take(bytes, &taken);
    std::memcpy(field, from, std::size_t(taken));
}

// fromUtf8() takes a mark at the start for one of the encoding and leaves it out; here it is text.
QString DatReader::readText(int bytes)
{
    int taken;
    const char* from = take(bytes, &taken);
    const QString text = QString::fromUtf8(from, taken);
    const bool marked = taken >= 3 && std::memcmp(from, "\xef\xbb\xbf", 3) == 0;
    return marked ? QChar(QChar::ByteOrderMark) + text : text;
}

const QByteArray& DatWriter::bytes() const
{
    return m_bytes;
}

void DatWriter::reserve(int bytes)
{
    m_bytes.reserve(bytes);
}

void DatWriter::write(const void* field, int bytes)
{
    m_bytes.append(static_cast<const char*>(field), bytes);
}

bool DatWriter::save(const QString& path) const
{
    return writeWholeFile(path, m_bytes);
}

} // namespace quillon
