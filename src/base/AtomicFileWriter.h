#pragma once

#include <QByteArray>
#include <QSaveFile>
#include <QString>

// Replaces a file in one step, and only once every byte has reached the disk. QSaveFile alone is
// not enough: its buffered write reports success on a full disk and commit() then puts the empty
// temporary file in place of the user's file. Here every block is written unbuffered and checked,
// the data is synced before the rename, and any failure leaves the old file exactly as it was.
class AtomicFileWriter {
public:
    // Raises the file system's RuntimeError when the file cannot be created.
    explicit AtomicFileWriter(const QString& path);
    ~AtomicFileWriter();
    AtomicFileWriter(const AtomicFileWriter&) = delete;
    AtomicFileWriter& operator=(const AtomicFileWriter&) = delete;

    // Collected and written in large blocks; raises "Datenträger voll" (61) or the device error (57).
    void write(const QByteArray& bytes);
    // Puts the file in place; raises as write() does, or the access error when the rename fails.
    void commit();

    // The whole file in one call.
    static void writeFile(const QString& path, const QByteArray& bytes);

private:
    void writePending();
    [[noreturn]] void fail(int error);

    QString m_path;
    QSaveFile m_file;
    QByteArray m_pending;
    bool m_done = false;
};
