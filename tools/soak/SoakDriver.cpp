#include "SoakDriver.h"

#include "ChannelListenInterface.h"
#include "CodeId.h"
#include "MainWindow.h"
#include "Messages.h"
#include "ModelInterface.h"
#include "ProcessFigures.h"
#include "SerialLink.h"
#include "StatusText.h"
#include "UnitRunner.h"

#include <QPushButton>
#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QTimer>
#include <QtTest/QTest>

#include <cstdio>
#include <malloc.h>

namespace
{
// A unit on a poor line answers a group within a second; far longer is a fault.
constexpr int kAnswerTimeoutMs = 10000;
// The window tries the port once a second and waits for the unit after
// opening it; a new unit is heard again within a few seconds.
constexpr int kReconnectTimeoutMs = 30000;
const char *const kOpNames[] = { "hub", "section", "file", "hangup" };

// What the program holds on the heap (mmapped blocks included); unlike the
// resident size it falls again when blocks are freed.
double heapInUseMb()
{
    const struct mallinfo2 m = mallinfo2();
    return double(m.uordblks + m.hblkhd) / (1024.0 * 1024.0);
}

} // namespace

SoakDriver::SoakDriver(MainWindow *window, UnitRunner *unit, const SoakOptions &options, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_unit(unit)
    , m_options(options)
    , m_tick(new QTimer(this))
{
    // The label of the connecting screen, shown while no unit answers.
    m_connectingLabel = window->findChild<QLabel *>(QStringLiteral("label_state"));
    connect(window, &MainWindow::signal_information, this, [this](CodeID code, const QByteArray &) {
        if (code == ChannelDataReport)
            ++m_reports;
        else if (code != BatteryData)
            ++m_groupAnswers;
    });
    m_tick->setInterval(1000);
    connect(m_tick, &QTimer::timeout, this, &SoakDriver::tick);

    // The questions are answered yes (write, write the loaded file). The
    // question about unwritten edits follows loading the saved file: loading
    // converts its negative SBUS fixed values, so the pages then differ from
    // what the write-all sent; it is answered by discarding the edits.
    Messages::setResponder([this](const Messages::Shown &shown) {
        if (shown.kind != Messages::Kind::Dialog)
            note(QStringLiteral("message: %1: %2").arg(shown.title, shown.text));
        return true;
    });
    Messages::setChoiceResponder([this](const Messages::Shown &shown, const QStringList &choices) {
        note(QStringLiteral("question: %1 (%2), discarding").arg(shown.text, choices.join(QLatin1Char('/'))));
        return 1;
    });
    const QString file = QDir(options.outDir).filePath(QStringLiteral("work/soak.cfg"));
    Messages::setFileResponder([file](const QString &, const QString &, const QString &) { return file; });
}

bool SoakDriver::begin()
{
    m_clock.start();
    if (!waitUntil([this] { return onModelPage() && m_reports > 0; }, kReconnectTimeoutMs)) {
        note(QStringLiteral("the unit was not identified"));
        return false;
    }
    m_csv.setFileName(QDir(m_options.outDir).filePath(QStringLiteral("soak.csv")));
    if (!m_csv.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        note(QStringLiteral("cannot write %1").arg(m_csv.fileName()));
        return false;
    }
    m_csv.write(SoakSeries::csvHeader().toUtf8() + '\n');
    m_csv.flush();
    note(QStringLiteral("model page up, %1 reports so far; soaking for %2 min").arg(m_reports).arg(m_options.minutes));

    m_clock.restart();
    m_lastCpuMs = ProcessFigures::cpuMs();
    m_lastSampleS = 0;
    m_nextSample = m_options.sampleS;
    // Staggered, so that no two operations fall due together.
    m_nextDue[HubOp] = m_options.hubS / 2.0;
    m_nextDue[SectionOp] = m_options.sectionS / 2.0 + 5;
    m_nextDue[FileOp] = m_options.fileS / 2.0 + 10;
    m_nextDue[HangupOp] = m_options.hangupS / 2.0 + 15;
    m_tick->start();
    return true;
}

double SoakDriver::elapsedS() const
{
    return m_clock.elapsed() / 1000.0;
}

void SoakDriver::note(const QString &text)
{
    std::printf("soak %8.1f s  %s\n", m_clock.isValid() ? elapsedS() : 0.0, text.toLocal8Bit().constData());
    std::fflush(stdout);
}

void SoakDriver::tick()
{
    // Samples are due while an operation runs too (its waits run the event
    // loop); they only read counters.
    if (elapsedS() >= m_nextSample)
        sample();
    if (m_samples.size() && m_samples.constLast().elapsedS >= m_options.minutes * 60 - 0.5) {
        if (m_busy)
            return;
        m_tick->stop();
        note(QStringLiteral("operations by kind (done/failed): hub %1/%2, section %3/%4, file %5/%6, hangup %7/%8")
                 .arg(m_doneByOp[HubOp])
                 .arg(m_failedByOp[HubOp])
                 .arg(m_doneByOp[SectionOp])
                 .arg(m_failedByOp[SectionOp])
                 .arg(m_doneByOp[FileOp])
                 .arg(m_failedByOp[FileOp])
                 .arg(m_doneByOp[HangupOp])
                 .arg(m_failedByOp[HangupOp]));
        Q_EMIT finished();
        return;
    }
    if (m_busy)
        return;
    for (Op op : { HangupOp, FileOp, SectionOp, HubOp }) {
        if (elapsedS() >= m_nextDue[op]) {
            const int every[] = { m_options.hubS, m_options.sectionS, m_options.fileS, m_options.hangupS };
            m_nextDue[op] += every[op];
            run(op);
            return;
        }
    }
}

void SoakDriver::sample()
{
    const double now = elapsedS();
    const double cpu = ProcessFigures::cpuMs();
    SoakSample s;
    s.elapsedS = now;
    s.rssMb = ProcessFigures::residentMb();
    s.heapMb = heapInUseMb();
    s.cpuPercent = (cpu - m_lastCpuMs) / ((now - m_lastSampleS) * 1000.0) * 100.0;
    s.framesCut = m_window->serialLink()->framesCut();
    s.framesRefused = m_window->refusedAnswers();
    s.reconnects = m_window->reconnects();
    s.reconnectsFailed = m_reconnectsFailed;
    s.opsDone = m_done;
    s.opsFailed = m_failed;
    m_samples.append(s);
    m_lastCpuMs = cpu;
    m_lastSampleS = now;
    m_nextSample += m_options.sampleS;
    m_csv.write(SoakSeries::csvLine(s).toUtf8() + '\n');
    m_csv.flush();
    note(QStringLiteral("sample: rss %1 MB, heap %9 MB, cpu %2 %, frames cut %3, refused %4, reconnects %5 "
                        "(%6 failed), operations %7 done, %8 failed")
             .arg(s.rssMb, 0, 'f', 2)
             .arg(s.cpuPercent, 0, 'f', 2)
             .arg(s.framesCut)
             .arg(s.framesRefused)
             .arg(s.reconnects)
             .arg(s.reconnectsFailed)
             .arg(s.opsDone)
             .arg(s.opsFailed)
             .arg(s.heapMb, 0, 'f', 2));
    // Objects that pile up are the usual leak of a window that lives long.
    note(QStringLiteral("objects under the window %1, widgets %2")
             .arg(m_window->findChildren<QObject *>().size())
             .arg(QApplication::allWidgets().size()));
    if (!m_unit->running() && !m_busy)
        note(QStringLiteral("the virtual unit is not running"));
}

void SoakDriver::run(Op op)
{
    m_busy = true;
    QString why;
    bool ok = false;
    switch (op) {
    case HubOp:
        ok = enterHub(&why) && leaveHub(&why);
        break;
    case SectionOp:
        ok = readAndWriteSection(&why);
        break;
    case FileOp:
        ok = saveAndLoadFile(&why);
        break;
    case HangupOp:
        ok = hangUpAndReturn(&why);
        break;
    case OpCount:
        break;
    }
    // A failed operation may have left the hub shown: the next one starts
    // from the model page again.
    if (!ok && m_window->hub() && m_window->currentPage() == m_window->hub()) {
        QString ignored;
        leaveHub(&ignored);
    }
    ++(ok ? m_done : m_failed);
    ++(ok ? m_doneByOp[op] : m_failedByOp[op]);
    if (!ok)
        note(QStringLiteral("%1 failed: %2").arg(QLatin1String(kOpNames[op]), why));
    m_busy = false;
}

bool SoakDriver::onModelPage() const
{
    const int model = m_window->modelIndex();
    return model >= 0 && m_window->modelPage(model) && m_window->currentPage() == m_window->modelPage(model);
}

bool SoakDriver::waitUntil(const std::function<bool()> &done, int timeoutMs)
{
    if (done())
        return true;
    // Polled from the event loop, so the wait costs no CPU.
    QElapsedTimer waited;
    waited.start();
    QEventLoop loop;
    QTimer poll;
    connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done() || waited.elapsed() >= timeoutMs)
            loop.quit();
    });
    poll.start(20);
    loop.exec();
    return done();
}

void SoakDriver::click(QAbstractButton *button)
{
    if (button->isVisible())
        QTest::mouseClick(button, Qt::LeftButton);
    else
        button->click(); // a hub menu entry scrolled out of view
}

QString SoakDriver::operationText() const
{
    const auto *label = m_window->findChild<QLabel *>(QStringLiteral("statusOperation"));
    return label ? label->text() : QString();
}

bool SoakDriver::enterHub(QString *why)
{
    const int model = m_window->modelIndex();
    ModelInterface *page = m_window->modelPage(model);
    auto *button = page ? page->findChild<QAbstractButton *>(QStringLiteral("channelListen")) : nullptr;
    if (!onModelPage() || !button) {
        *why = QStringLiteral("not on the model page");
        return false;
    }
    const quint64 answers = m_groupAnswers;
    click(button);
    if (!m_window->hub() || m_window->currentPage() != m_window->hub()) {
        *why = QStringLiteral("the hub was not shown");
        return false;
    }
    // Entering reads SBUS 1.
    if (!waitUntil([&] { return m_groupAnswers > answers; }, kAnswerTimeoutMs)) {
        *why = QStringLiteral("no answer to the hub's read");
        return false;
    }
    return true;
}

bool SoakDriver::leaveHub(QString *why)
{
    ChannelListenInterface *hub = m_window->hub();
    auto *back = hub ? hub->findChild<QAbstractButton *>(QStringLiteral("returnButton")) : nullptr;
    if (!back) {
        *why = QStringLiteral("no hub to leave");
        return false;
    }
    // Leaving keeps the upload as it is, and most sections stop it; the
    // channel hold section starts it again, so the model page goes on
    // hearing the unit's reports, as it does for a user who left from there.
    const quint64 answers = m_groupAnswers;
    click(hub->menuButton(SectionChannelHold));
    if (!waitUntil([&] { return m_groupAnswers > answers; }, kAnswerTimeoutMs)) {
        *why = QStringLiteral("no answer after choosing %1").arg(StatusText::section(SectionChannelHold));
        return false;
    }
    click(back);
    if (!waitUntil([this] { return onModelPage(); }, kAnswerTimeoutMs)) {
        *why = QStringLiteral("the model page did not come back");
        return false;
    }
    return true;
}

bool SoakDriver::readAndWriteSection(QString *why)
{
    if (!enterHub(why))
        return false;
    ChannelListenInterface *hub = m_window->hub();
    QVector<int> sections = hub->menuEntries();
    sections.removeAll(ChannelListenInterface::kHelpEntry);
    const int section = sections.at(m_section++ % sections.size());

    quint64 answers = m_groupAnswers;
    click(hub->menuButton(section));
    if (!waitUntil([&] { return m_groupAnswers > answers; }, kAnswerTimeoutMs)) {
        *why = QStringLiteral("no answer after choosing %1").arg(StatusText::section(section));
        return false;
    }
    answers = m_groupAnswers;
    click(hub->actionButton(ChannelListenInterface::Action::ReadData));
    if (!waitUntil([&] { return m_groupAnswers > answers; }, kAnswerTimeoutMs)) {
        *why = QStringLiteral("no answer to reading %1").arg(StatusText::section(section));
        return false;
    }
    const quint64 refused = m_window->refusedAnswers();
    click(hub->actionButton(ChannelListenInterface::Action::WriteData));
    // The write's answers come in after its last frame.
    waitUntil([] { return false; }, 300);
    if (!operationText().contains(StatusText::wrote(section)) || m_window->refusedAnswers() != refused) {
        *why = QStringLiteral("writing %1: %2").arg(StatusText::section(section), operationText());
        return false;
    }
    return leaveHub(why);
}

bool SoakDriver::saveAndLoadFile(QString *why)
{
    if (!enterHub(why))
        return false;
    ChannelListenInterface *hub = m_window->hub();
    const QString path = QDir(m_options.outDir).filePath(QStringLiteral("work/soak.cfg"));
    QFile::remove(path);
    click(hub->actionButton(ChannelListenInterface::Action::SaveFile));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.readAll() != m_window->parameterFileText().toLocal8Bit()
        || !operationText().contains(StatusText::saved(QStringLiteral("soak.cfg")))) {
        *why = QStringLiteral("saving: %1").arg(operationText());
        return false;
    }
    const quint64 refused = m_window->refusedAnswers();
    // Loading asks whether to write the file's parameters; the answer is yes.
    click(hub->actionButton(ChannelListenInterface::Action::LoadFile));
    waitUntil([] { return false; }, 300);
    const QString text = operationText();
    const QRegularExpressionMatch all = QRegularExpression(QStringLiteral("(\\d+)")).match(
        text.mid(text.indexOf(QStringLiteral("  ")) + 2));
    const int frames = all.hasMatch() ? all.captured(1).toInt() : -1;
    if (frames <= 0 || !text.contains(StatusText::writeAllDone(frames, frames, 0, true))
        || m_window->refusedAnswers() != refused) {
        *why = QStringLiteral("loading and writing all: %1").arg(text);
        return false;
    }
    return leaveHub(why);
}

bool SoakDriver::hangUpAndReturn(QString *why)
{
    if (!onModelPage() || !m_connectingLabel) {
        *why = QStringLiteral("not on the model page");
        return false;
    }
    const int reconnects = m_window->reconnects();
    QElapsedTimer since;
    since.start();
    m_unit->stop();
    const bool noticed
        = waitUntil([this] { return m_window->currentPage()->isAncestorOf(m_connectingLabel); }, kAnswerTimeoutMs);
    note(QStringLiteral("hang-up %1 after %2 ms").arg(noticed ? "noticed" : "not noticed").arg(since.elapsed()));
    if (!noticed) {
        *why = QStringLiteral("the window did not notice the hang-up");
        ++m_reconnectsFailed;
        m_unit->start(m_options.unitArguments);
        return false;
    }
    QStringList arguments = m_options.unitArguments;
    arguments << QStringLiteral("--seed") << QString::number(++m_unitStarts);
    if (!m_unit->start(arguments)) {
        *why = QStringLiteral("the virtual unit did not start again");
        ++m_reconnectsFailed;
        return false;
    }
    quint64 reports = 0;
    bool back = waitUntil(
        [&] {
            if (m_window->reconnects() == reconnects || !onModelPage())
                return false;
            if (!reports)
                reports = m_reports;
            return m_reports > reports; // the upload runs again
        },
        kReconnectTimeoutMs);
    if (!back) {
        *why = QStringLiteral("the window did not reconnect within %1 s").arg(kReconnectTimeoutMs / 1000);
        ++m_reconnectsFailed;
        return false;
    }
    ++m_reconnectsDone;
    note(QStringLiteral("reconnected %1 ms after the hang-up").arg(since.elapsed()));
    return true;
}
