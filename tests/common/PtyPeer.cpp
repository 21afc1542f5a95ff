#include "PtyPeer.h"

#include "SerialFrame.h"

#include <QSocketNotifier>
#include <QStringList>

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

PtyPeer::PtyPeer()
{
    m_clock.start();
}

PtyPeer::~PtyPeer()
{
    delete m_notifier;
    if (m_slave >= 0)
        ::close(m_slave);
    if (m_master >= 0)
        ::close(m_master);
}

bool PtyPeer::open()
{
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
        return false;
    m_slavePath = QString::fromLocal8Bit(ptsname(m_master));
    m_slave = ::open(ptsname(m_master), O_RDWR | O_NOCTTY);
    if (m_slave < 0)
        return false;
    termios raw {};
    tcgetattr(m_slave, &raw);
    cfmakeraw(&raw);
    tcsetattr(m_slave, TCSANOW, &raw);
    m_notifier = new QSocketNotifier(m_master, QSocketNotifier::Read);
    connect(m_notifier, &QSocketNotifier::activated, this, &PtyPeer::readMaster);
    return true;
}

void PtyPeer::write(const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(m_master, bytes.constData() + done, size_t(bytes.size() - done));
        if (n <= 0)
            break;
        done += n;
    }
}

void PtyPeer::answer(quint8 code, const QByteArray &payload)
{
    write(SerialFrame::encode(code, payload));
}

void PtyPeer::readMaster()
{
    char buf[4096];
    for (;;) {
        const ssize_t n = ::read(m_master, buf, sizeof buf);
        if (n <= 0)
            return;
        const qint64 now = m_clock.elapsed();
        m_cutter.feed(QByteArray(buf, int(n)), [this, now](quint8 code, const QByteArray &payload) {
            m_received.append({ now, code, payload });
        });
    }
}

QStringList PtyPeer::frames() const
{
    QStringList list;
    for (const Received &r : m_received)
        list << QString::fromLatin1(QByteArray(1, char(r.code)).toHex() + ':' + r.payload.toHex());
    return list;
}
