#include "PtyPort.h"

#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QTimer>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace
{
constexpr int kLineCheckMs = 50;
constexpr int kMaxBacklog = 64 * 1024;
} // namespace

PtyPort::PtyPort(QObject *parent)
    : QObject(parent)
{
}

PtyPort::~PtyPort()
{
    removeLink();
    hangUp();
}

bool PtyPort::open(QString *error)
{
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
        *error = QStringLiteral("cannot create a pseudo-terminal: %1")
                     .arg(QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    const char *name = ::ptsname(m_master);
    if (!name) {
        *error = QStringLiteral("no name for the pseudo-terminal");
        return false;
    }
    m_slavePath = QString::fromLocal8Bit(name);

    // Raw line from the start: without it the slave would echo our answers
    // back to us and translate bytes before the configurator sets its mode.
    const int slave = ::open(name, O_RDWR | O_NOCTTY);
    if (slave >= 0) {
        termios t;
        if (::tcgetattr(slave, &t) == 0) {
            ::cfmakeraw(&t);
            ::cfsetispeed(&t, B115200);
            ::cfsetospeed(&t, B115200);
            ::tcsetattr(slave, TCSANOW, &t);
        }
        ::close(slave);
    }
    ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);

    m_readNotifier = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    m_readNotifier->setEnabled(false);
    connect(m_readNotifier, &QSocketNotifier::activated, this, &PtyPort::onReadable);
    m_lineTimer = new QTimer(this);
    connect(m_lineTimer, &QTimer::timeout, this, &PtyPort::checkLine);
    m_lineTimer->start(kLineCheckMs);
    checkLine();
    return true;
}

bool PtyPort::createLink(const QString &path, QString *error)
{
    const QFileInfo info(path);
    if (info.isSymLink() || info.exists()) {
        if (!info.isSymLink()) {
            *error = QStringLiteral("%1 exists and is not a symlink").arg(path);
            return false;
        }
        QFile::remove(path); // a leftover of an earlier run
    }
    if (::symlink(QFile::encodeName(m_slavePath).constData(), QFile::encodeName(path).constData()) != 0) {
        *error
            = QStringLiteral("cannot create %1: %2").arg(path, QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    m_linkPath = path;
    return true;
}

void PtyPort::removeLink()
{
    if (m_linkPath.isEmpty())
        return;
    if (QFileInfo(m_linkPath).symLinkTarget() == QFileInfo(m_slavePath).absoluteFilePath())
        QFile::remove(m_linkPath);
    m_linkPath.clear();
}

void PtyPort::hangUp()
{
    if (m_master < 0)
        return;
    delete m_readNotifier;
    m_readNotifier = nullptr;
    if (m_lineTimer)
        m_lineTimer->stop();
    ::close(m_master);
    m_master = -1;
    m_backlog.clear();
    setConnected(false);
}

void PtyPort::write(const QByteArray &bytes)
{
    if (m_master < 0 || !m_connected || bytes.isEmpty())
        return;
    m_backlog += bytes;
    if (m_backlog.size() > kMaxBacklog) {
        Q_EMIT note(QStringLiteral("the configurator reads nothing: dropped %1 bytes").arg(m_backlog.size()));
        m_backlog.clear();
        return;
    }
    flushBacklog();
}

void PtyPort::flushBacklog()
{
    while (!m_backlog.isEmpty()) {
        const ssize_t n = ::write(m_master, m_backlog.constData(), size_t(m_backlog.size()));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return; // full (EAGAIN) or gone: the line check sorts it out
        }
        m_backlog.remove(0, int(n));
    }
}

void PtyPort::onReadable()
{
    char buf[4096];
    for (;;) {
        const ssize_t n = ::read(m_master, buf, sizeof buf);
        if (n > 0) {
            Q_EMIT received(QByteArray(buf, int(n)));
            if (m_master < 0)
                return; // hung up by a receiver
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && errno == EAGAIN)
            return;
        // EIO: the last one holding the slave closed it.
        setConnected(false);
        return;
    }
}

void PtyPort::checkLine()
{
    if (m_master < 0)
        return;
    pollfd p { m_master, POLLIN, 0 };
    if (::poll(&p, 1, 0) < 0)
        return;
    setConnected(!(p.revents & POLLHUP));
    if (m_connected)
        flushBacklog();
}

void PtyPort::setConnected(bool connected)
{
    if (m_readNotifier)
        m_readNotifier->setEnabled(connected);
    if (connected == m_connected)
        return;
    m_connected = connected;
    m_backlog.clear();
    // Bytes written after the last reader left would otherwise wait in the
    // tty for the next one; a fresh connection starts on a quiet line.
    if (m_master >= 0)
        ::tcflush(m_master, TCOFLUSH);
    Q_EMIT connectedChanged(connected);
}
