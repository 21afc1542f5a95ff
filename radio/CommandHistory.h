#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>

// The commands typed into the module window's AT console, with the time each
// was sent, oldest first. The console itself shows only the module's reply;
// this list lets the user see what was asked and pick a command again. It
// keeps the newest kBound commands.
class CommandHistory
{
public:
    static constexpr int kBound = 200;

    struct Entry {
        QDateTime sent;
        QString command;
    };

    // Adds a command sent at that time; true when the oldest one made room.
    bool add(const QString &command, const QDateTime &sent);
    const QVector<Entry> &entries() const { return m_entries; }
    // The command to put back into the input; empty outside the list.
    QString command(int index) const;

    // How the list shows an entry: "14:03:27  AT^DRPS?".
    static QString line(const Entry &entry);

private:
    QVector<Entry> m_entries;
};
