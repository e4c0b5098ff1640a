// dzgzio.h - gzip as a device on top of another device. Sequential; one direction at a time.
//
// Reading gives the unpacked bytes, of several gzip members in a row as one stream; what follows
// the last member is left alone. Input that is no gzip opens, and the first read gives -1. Damaged
// or cut input gives everything that could be unpacked, then -1. Memory is the buffer plus what
// zlib needs, whatever the size of the data.
// Writing makes one member; close() completes it. errorString() tells what went wrong; after a
// failed write it stays set through close().
#pragma once

#include "dzcore_export.h"

#include <QIODevice>

class DZCORE_EXPORT DzGzIO : public QIODevice {
    Q_OBJECT
public:
    // The device is not owned and has to outlive this one. compressionLevel 0..9, others: 6;
    // bufferSize in bytes, at least 1: read or written at a time.
    explicit DzGzIO(QIODevice* device, int compressionLevel = 6, int bufferSize = 65500);
    ~DzGzIO() override; // closes

    bool isSequential() const override;
    // ReadOnly or WriteOnly; anything else gives false. Opens the device when it is not open yet
    // (close() then closes it, too); false when that fails or when it is open the other way.
    bool open(OpenMode) override;
    void close() override;
    bool atEnd() const override;
    qint64 bytesAvailable() const override; // 0 only when there is nothing more
    bool hasFailed() const; // a read or write went wrong since open()

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    Q_DISABLE_COPY(DzGzIO)
    struct Private;
    Private* d;
};
