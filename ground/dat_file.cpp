#include "ground/dat_file.h"

#include "ground/whole_file.h"

#if Q_BYTE_ORDER != Q_LITTLE_ENDIAN
#error "the .dat files hold values as they lie in the memory of a little-endian machine"
#endif

namespace quillon {

DatReader::DatReader(const QString& path)
    : m_file(path)
    , m_left(0)
{
    if (m_file.open(QIODevice::ReadOnly))
        m_left = m_file.size();
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
    const qint64 count = m_file.isOpen() ? m_file.read(static_cast<char*>(field), bytes) : 0;
    m_left -= qMin(qMax(count, qint64(0)), m_left);
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
