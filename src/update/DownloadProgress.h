#pragma once

#include <QObject>
#include <QString>

// The update window's progress bar as the download sees it: a maximum and a value. The window
// mirrors it onto a real progress bar; the download only ever adds to the value.
class DownloadProgress : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    qint64 Max() const { return m_max; }
    qint64 Value() const { return m_value; }
    void setMax(qint64 max);
    void setValue(qint64 value);

    // "<kb> kb / <kb> kb": both figures rounded half to even.
    static QString infoText(qint64 value, qint64 max);
    // "<n> %" of the rounded kilobyte figures; empty when the expected size rounds to 0 kb,
    // where the per-cent display is left as it was.
    static QString percentText(qint64 value, qint64 max);

signals:
    void changed(qint64 value, qint64 max);

private:
    qint64 m_max = 100;
    qint64 m_value = 0;
};
