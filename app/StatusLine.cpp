#include "StatusLine.h"

#include <QLabel>
#include <QStatusBar>

namespace
{
QLabel *addLabel(QStatusBar *bar, const char *name, bool permanent)
{
    auto *label = new QLabel(bar);
    label->setObjectName(QLatin1String(name));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setContentsMargins(4, 0, 4, 0); // clear of the window's edge
    if (permanent)
        bar->addPermanentWidget(label);
    else
        bar->addWidget(label, 1);
    return label;
}
} // namespace

StatusLine::StatusLine(QStatusBar *bar)
    : QObject(bar)
    , m_port(addLabel(bar, "statusPort", false))
    , m_unit(addLabel(bar, "statusUnit", false))
    , m_connection(addLabel(bar, "statusConnection", false))
    , m_operation(addLabel(bar, "statusOperation", true))
{
    bar->setSizeGripEnabled(false);
}

void StatusLine::setPort(const QString &portName)
{
    m_port->setText(StatusText::port(portName));
}

void StatusLine::setUnit(const QString &modelIdentifier, int moduleKind)
{
    m_unit->setText(StatusText::unit(modelIdentifier, moduleKind));
}

void StatusLine::setConnection(StatusText::Connection state, const QString &reason)
{
    m_connection->setText(StatusText::connection(state, reason));
}

void StatusLine::begin(Open open, int section)
{
    m_open = open;
    m_section = section;
    m_answers = 0;
    m_refusals = 0;
}

void StatusLine::show(const QString &outcome)
{
    m_operation->setText(StatusText::stamped(QTime::currentTime(), outcome));
}

QString StatusLine::withBackupNote(const QString &outcome)
{
    if (m_backupNote.isEmpty())
        return outcome;
    const QString text = outcome + QStringLiteral(" · ") + m_backupNote;
    m_backupNote.clear();
    return text;
}

void StatusLine::readStarted(int section)
{
    begin(Open::Read, section);
    show(StatusText::read(section, 0));
}

void StatusLine::factoryResetStarted(int section)
{
    begin(Open::FactoryReset, section);
    show(StatusText::factoryReset(section, 0));
}

void StatusLine::answerArrived()
{
    if (m_open != Open::Read && m_open != Open::FactoryReset)
        return;
    ++m_answers;
    if (m_refusals > 0)
        return; // the refusal stays in view
    show(m_open == Open::Read ? StatusText::read(m_section, m_answers)
                              : StatusText::factoryReset(m_section, m_answers));
}

void StatusLine::refused(const QString &refusalText)
{
    ++m_refusals;
    if (m_open == Open::WriteAll)
        return; // counted; the write-all says how many at its end
    show(StatusText::refused(refusalText));
}

void StatusLine::writeStarted(int section)
{
    begin(Open::Write, section);
}

void StatusLine::writeAllStarted()
{
    begin(Open::WriteAll, -1);
}

void StatusLine::wrote(int section)
{
    const bool refusedMeanwhile = m_open == Open::Write && m_refusals > 0;
    begin(Open::None, section);
    if (refusedMeanwhile)
        return;
    show(withBackupNote(StatusText::wrote(section)));
}

void StatusLine::notWritten(int section)
{
    begin(Open::None, section);
    show(StatusText::notWritten(section));
}

void StatusLine::writeAllProgress(int sent, int total)
{
    show(StatusText::writeAllProgress(sent, total));
}

void StatusLine::writeAllFinished(int sent, int total, bool portOpen)
{
    const int refusals = m_open == Open::WriteAll ? m_refusals : 0;
    begin(Open::None, -1);
    show(withBackupNote(StatusText::writeAllDone(sent, total, refusals, portOpen)));
}

void StatusLine::loaded(const QString &fileName, int elements, qint64 stoppedAtLine)
{
    begin(Open::None, -1);
    show(StatusText::loaded(fileName, elements, stoppedAtLine));
}

void StatusLine::notLoaded(const QString &fileName)
{
    begin(Open::None, -1);
    show(StatusText::notLoaded(fileName));
}

void StatusLine::saved(const QString &fileName)
{
    begin(Open::None, -1);
    show(StatusText::saved(fileName));
}

void StatusLine::notSaved(const QString &fileName)
{
    begin(Open::None, -1);
    show(StatusText::notSaved(fileName));
}

void StatusLine::backupSaved(const QString &relativePath)
{
    m_backupNote = StatusText::backupSaved(relativePath);
    show(m_backupNote);
}

void StatusLine::backupFailed(const QString &error)
{
    m_backupNote = StatusText::backupFailed(error);
    show(m_backupNote);
}

QString StatusLine::operationText() const
{
    return m_operation->text();
}
