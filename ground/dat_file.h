// dat_file.h - reading and writing of the plug-in's .dat files.
// Little-endian, packed, values as they lie in memory. Both are values for the stack: any number of
// files may be open, and a file is written when its bytes are all there (whole_file.h).
// Whatever lies at the path: only a plain file is opened (plain_file.h), and no more of it is read
// than kLargestDatFile.
#pragma once

#include <QByteArray>
#include <QString>

#include <type_traits>

namespace quillon {

template <typename T> struct IsDatField {
    static constexpr bool value = std::is_arithmetic<T>::value && !std::is_same<T, bool>::value;
};

// In bytes; more than a full pose index with the longest paths that are read has.
const qint64 kLargestDatFile = 48 * 1024 * 1024;

class DatReader {
public:
    explicit DatReader(const QString& path);

    bool isOpen() const;
    bool isWhole() const; // no byte failed to come; what is past the limit is not missed
    qint64 bytesLeft() const; // of what the file had when it was opened

    // A short read leaves the rest of the field as it was.
    void read(void* field, int bytes);
    QString readText(int bytes); // UTF-8; a short read gives what there is
    template <typename T> void readField(T* field)
    {
        static_assert(IsDatField<T>::value, "a plain number");
        read(field, int(sizeof(T)));
    }

private:
    const char* take(int bytes, int* taken);

    QByteArray m_bytes; // of the file, as it was opened
    int m_at; // of the next read
    bool m_open;
    bool m_whole;
};

class DatWriter {
public:
    const QByteArray& bytes() const; // so far
    void reserve(int bytes); // room for a file whose size is known
    void write(const void* field, int bytes);
    template <typename T> void writeField(const T& field)
    {
        static_assert(IsDatField<T>::value, "a plain number");
        write(&field, int(sizeof(T)));
    }

    // All that was written, as the content of the file. False: the file is as it was.
    [[nodiscard]] bool save(const QString& path) const;

private:
    QByteArray m_bytes;
};

} // namespace quillon
