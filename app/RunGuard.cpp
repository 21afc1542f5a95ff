#include "RunGuard.h"

#include <QCryptographicHash>

RunGuard::RunGuard(const QString &key)
    : m_key(key)
    , m_memLockKey(deriveKey(key, QStringLiteral("_memLockKey")))
    , m_sharedMemKey(deriveKey(key, QStringLiteral("_sharedmemKey")))
    , m_sharedMem(m_sharedMemKey)
    , m_memLock(m_memLockKey, 1)
{
    // Attaching and dropping a segment clears one that a crashed instance
    // left behind.
    m_memLock.acquire();
    {
        QSharedMemory fix(m_sharedMemKey);
        fix.attach();
    }
    m_memLock.release();
}

RunGuard::~RunGuard()
{
    release();
}

QString RunGuard::deriveKey(const QString &key, const QString &suffix)
{
    QByteArray data = key.toUtf8();
    data.append(suffix.toUtf8());
    return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha1).toHex());
}

bool RunGuard::isAnotherRunning()
{
    if (m_sharedMem.isAttached())
        return false;
    m_memLock.acquire();
    const bool running = m_sharedMem.attach();
    if (running)
        m_sharedMem.detach();
    m_memLock.release();
    return running;
}

bool RunGuard::tryToRun()
{
    if (isAnotherRunning())
        return false;
    m_memLock.acquire();
    const bool created = m_sharedMem.create(sizeof(quint64));
    m_memLock.release();
    if (!created) {
        release();
        return false;
    }
    return true;
}

void RunGuard::release()
{
    m_memLock.acquire();
    if (m_sharedMem.isAttached())
        m_sharedMem.detach();
    m_memLock.release();
}
