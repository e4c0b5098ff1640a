#include "ground/dat_file.h"

#include "ground/plain_file.h"
#include "ground/whole_file.h"

#if Q_BYTE_ORDER != Q_LITTLE_ENDIAN
#error "the .dat files hold values as they lie in the memory of a little-endian machine"
#endif

namespace quillon {

DatReader::DatReader(const QString& path)
    : m_file(path)
    , m_left(0)
{
    if (openPlainFile(&m_file, QIODevice::ReadOnly))
        m_left = qMin(m_file.size(), kLargestDatFile);
}

bool DatReader::isOpen() const
{
    return m_file.isOpen();
}

qint64 DatReader::bytesLeft() const
{
    return m_left;
}

void DatReader::read(void* field, int bytes)
{
    const qint64 wanted = qMin(qint64(bytes), m_left);
    const qint64 count = wanted > 0 ? m_file.read(static_cast<char*>(field), wanted) : 0;
    m_left -= qMax(count, qint64(0));
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
