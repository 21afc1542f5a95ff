#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

class QSocketNotifier;
class QTimer;

// The unit's end of a pseudo-terminal. The configurator opens the other end
// (the slave) as its serial port. The line is "connected" while somebody has
// the slave open; bytes written while nobody listens are dropped, as on a
// cable that is not plugged in (the tty would otherwise keep them for the
// next one to open it).
class PtyPort : public QObject
{
    Q_OBJECT
public:
    explicit PtyPort(QObject *parent = nullptr);
    ~PtyPort() override;

    bool open(QString *error);
    QString slavePath() const { return m_slavePath; }
    bool isConnected() const { return m_connected; }

    // A symlink at path pointing to the slave; removed again by removeLink()
    // (only if it still points there).
    bool createLink(const QString &path, QString *error);
    void removeLink();

    void write(const QByteArray &bytes);
    // Closes the master: the slave side sees the line hang up.
    void hangUp();

Q_SIGNALS:
    void received(const QByteArray &bytes);
    void connectedChanged(bool connected);
    void note(const QString &text);

private:
    void onReadable();
    void checkLine();
    void setConnected(bool connected);
    void flushBacklog();

    int m_master = -1;
    QString m_slavePath;
    QString m_linkPath;
    QSocketNotifier *m_readNotifier = nullptr;
    QTimer *m_lineTimer = nullptr;
    bool m_connected = false;
    QByteArray m_backlog; // written when the tty has room again
};
