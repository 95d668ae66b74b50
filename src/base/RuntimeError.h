#pragma once

#include <QString>
#include <exception>

// A run-time failure as the product reports it: an error number and a German description.
// Thrown wherever a step cannot go on; caught by the handler at the top of each event
// (see ErrorReport), which turns it into the "Fehler in … in Zeile …" message.
class RuntimeError : public std::exception {
public:
    enum Number {
        InvalidCall = 5,
        Overflow = 6,
        SubscriptOutOfRange = 9,
        TypeMismatch = 13,
        BadFileName = 52,
        FileNotFound = 53,
        DeviceIo = 57,
        DiskFull = 61,
        PermissionDenied = 70,
        PathFileAccess = 75,
        PathNotFound = 76,
        DialogCancelled = 32755,
    };

    RuntimeError(int number, QString description);

    int number() const { return m_number; }
    const QString& description() const { return m_description; }
    const char* what() const noexcept override { return m_what.constData(); }

    static RuntimeError overflow();
    static RuntimeError typeMismatch();
    static RuntimeError invalidCall();
    static RuntimeError subscriptOutOfRange();
    // The error a failed open raises, worded as the file system's (missing folder, folder, no rights).
    static RuntimeError fileOpen(const QString& file, bool forWriting);
    // A write the system refused: "Datenträger voll" for a full disk or quota, else the device error.
    static RuntimeError fileWrite(int systemError);

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};
