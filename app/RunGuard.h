#pragma once

#include <QSharedMemory>
#include <QString>
#include <QSystemSemaphore>

// Keeps a second Quillmark from running: one 8-byte shared-memory segment
// marks the running instance, a system semaphore guards its creation.
class RunGuard
{
public:
    explicit RunGuard(const QString &key);
    ~RunGuard();

    bool isAnotherRunning();
    bool tryToRun();
    void release();

    // Lower-case hex SHA-1 of the key's UTF-8 bytes followed by the suffix.
    static QString deriveKey(const QString &key, const QString &suffix);

private:
    const QString m_key;
    const QString m_memLockKey;
    const QString m_sharedMemKey;
    QSharedMemory m_sharedMem;
    QSystemSemaphore m_memLock;

    Q_DISABLE_COPY(RunGuard)
};
