#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QVector>

// The virtual unit binary, started for a test with its pty link and record
// file in the given folder.
class VunitProcess
{
public:
    struct RecordLine {
        qint64 ms = 0;
        quint8 code = 0;
        QByteArray payload;
    };

    explicit VunitProcess(const QString &folder);
    ~VunitProcess();

    // Starts with --print-path, --link and --record plus extra; true once the
    // pty path was printed.
    bool start(const QStringList &extra = QStringList());
    void terminate();

    QString ptyPath() const { return m_ptyPath; }
    QString linkPath() const { return m_linkPath; }
    QProcess &process() { return m_process; }
    QVector<RecordLine> record() const;
    // Index of the first record line with this code (and payload, when given)
    // at or after from; -1 when there is none.
    int find(quint8 code, const QByteArray &payload = QByteArray(), int from = 0) const;

    // Milliseconds of the monotonic clock, as the unit's --time-origin takes them.
    static qint64 monotonicMs();

    // An application directory for the program under test: the delivered
    // config files, the pictures, and a port.xml naming port (the unit's
    // linkPath(), or a port that is not there).
    static bool writeAppDir(const QString &dir, const QString &port);
    // start(), then the application directory folder/app naming this unit's
    // link, with the program under test (AppPaths) pointed at it.
    bool startWithApp(const QStringList &extra = QStringList());

private:
    QString m_folder;
    QProcess m_process;
    QString m_ptyPath;
    QString m_linkPath;
    QString m_recordPath;
};
