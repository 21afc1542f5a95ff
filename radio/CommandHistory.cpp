#include "CommandHistory.h"

bool CommandHistory::add(const QString &command, const QDateTime &sent)
{
    m_entries.append({ sent, command });
    if (m_entries.size() <= kBound)
        return false;
    m_entries.removeFirst();
    return true;
}

QString CommandHistory::command(int index) const
{
    return index >= 0 && index < m_entries.size() ? m_entries.at(index).command : QString();
}

QString CommandHistory::line(const Entry &entry)
{
    return entry.sent.toString(QStringLiteral("HH:mm:ss")) + QStringLiteral("  ") + entry.command;
}
