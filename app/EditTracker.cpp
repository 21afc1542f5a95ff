#include "EditTracker.h"

#include "ChannelListenInterface.h"
#include "EditMarks.h"
#include "FrameCutter.h"
#include "MCheckBox.h"
#include "MSpinBox.h"
#include "Messages.h"
#include "PhaseSwitch.h"
#include "RecordAnswers.h"
#include "SbusConfig.h"
#include "SettingPage.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace
{
// Edits come in bursts (a held spin box steps 20 times a second): one
// comparison after the burst is enough.
constexpr int kSettleMs = 40;

enum Choice { WriteChoice, DiscardChoice, StayChoice };

UnwrittenEdits::Groups sectionGroups(int section)
{
    using namespace UnwrittenEdits;
    switch (section) {
    case SectionSbus1:
        return kSbusPort1;
    case SectionSbus2:
        return kSbusPort2;
    case SectionChannelHold:
        return ChannelHold;
    case SectionButtons:
        return kButtons;
    case SectionComprehensive:
        return kComprehensive;
    case SectionRadioModule:
        return kModulePower;
    case SectionCustomOutput:
        return kCustomOutput;
    default:
        return 0;
    }
}
} // namespace

EditTracker::EditTracker(DeviceData &record, WriteSection write, QWidget *window)
    : QObject(window)
    , m_record(record)
    , m_write(std::move(write))
    , m_window(window)
    , m_timer(new QTimer(this))
{
    m_timer->setSingleShot(true);
    m_timer->setInterval(kSettleMs);
    connect(m_timer, &QTimer::timeout, this, &EditTracker::refresh);
}

void EditTracker::forget()
{
    m_known = DeviceData();
    m_answered = 0;
    schedule();
}

void EditTracker::noteAnswer(quint8 readCode, const QByteArray &payload, int model)
{
    m_model = model;
    if (RecordAnswers::decode(readCode, payload, model, m_known)) {
        m_answered |= UnwrittenEdits::groupOfAnswer(readCode, payload);
        schedule();
    }
}

// What went out is what the unit holds now: it answers a write only with a
// status, and a refusal is no more than a line in the log.
void EditTracker::noteWrite(const RequestPlan &plan, int model)
{
    m_model = model;
    FrameCutter cutter;
    for (const Request &request : plan) {
        cutter.feed(request.frame, [this, model](quint8 code, const QByteArray &payload) {
            const quint8 read = RecordAnswers::readCodeOfWrite(code);
            if (read && RecordAnswers::decode(read, payload, model, m_known))
                m_answered |= UnwrittenEdits::groupOfAnswer(read, payload);
        });
    }
    schedule();
}

void EditTracker::attach(ChannelListenInterface *hub)
{
    m_hub = hub;
    if (!hub)
        return;
    for (SettingPage *page : hub->pages())
        watch(page);
    hub->setLeaveCheck([this] { return settle(Occasion::Return); });
    schedule();
}

void EditTracker::watch(SettingPage *page)
{
    for (MSpinBox *box : page->findChildren<MSpinBox *>()) {
        connect(box, &MSpinBox::currentValueChanged, this, &EditTracker::schedule);
        box->installEventFilter(this); // its enable box says nothing when clicked
    }
    for (PhaseSwitch *toggle : page->findChildren<PhaseSwitch *>())
        toggle->installEventFilter(this);
    for (MCheckBox *box : page->findChildren<MCheckBox *>())
        box->installEventFilter(this);
    for (QComboBox *box : page->findChildren<QComboBox *>())
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &EditTracker::schedule);
    for (QLineEdit *edit : page->findChildren<QLineEdit *>())
        connect(edit, &QLineEdit::textChanged, this, &EditTracker::schedule);
}

bool EditTracker::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::KeyRelease)
        schedule();
    return QObject::eventFilter(watched, event);
}

void EditTracker::schedule()
{
    if (m_hub)
        m_timer->start();
}

QVector<int> EditTracker::refresh()
{
    m_timer->stop();
    QVector<int> edited;
    if (!m_hub)
        return edited;
    for (SettingPage *page : m_hub->pages()) {
        DeviceData scratch = m_record;
        page->collectInto(scratch);
        QSet<QString> keys;
        for (int section = 0; section < SectionCount; ++section) {
            if (m_hub->page(section) != page)
                continue;
            const QSet<QString> differing
                = UnwrittenEdits::differing(scratch, m_known, sectionGroups(section) & m_answered, m_model);
            if (!differing.isEmpty())
                edited.append(section);
            keys.unite(differing);
        }
        for (const SettingPage::FieldControl &field : page->fieldControls()) {
            bool marked = false;
            for (const QString &key : field.keys)
                marked = marked || keys.contains(key);
            EditMarks::setMarked(field.control, marked);
        }
    }
    std::sort(edited.begin(), edited.end());
    for (int section = 0; section < SectionCount; ++section) {
        QPushButton *button = m_hub->menuButton(section);
        const bool marked = edited.contains(section);
        EditMarks::setMarked(button, marked);
        if (button)
            button->setToolTip(marked ? tr("有修改尚未写入遥控器") : QString());
    }
    return edited;
}

QString EditTracker::sectionNames(const QVector<int> &sections) const
{
    QStringList names;
    for (int section : sections) {
        if (QPushButton *button = m_hub->menuButton(section))
            names << button->text();
    }
    return names.join(tr("、"));
}

bool EditTracker::settle(Occasion occasion)
{
    const QVector<int> sections = refresh();
    if (sections.isEmpty())
        return true;
    QString question;
    switch (occasion) {
    case Occasion::Return:
        question = tr("返回前要写入吗？");
        break;
    case Occasion::Close:
        question = tr("关闭前要写入吗？");
        break;
    case Occasion::Reconnect:
        question = tr("遥控器已重新连接，页面将重建。要先写入吗？");
        break;
    }
    const QString text
        = tr("以下页面有修改尚未写入遥控器：%1").arg(sectionNames(sections)) + QLatin1Char('\n') + question;
    const QStringList choices { tr("写入"), tr("放弃修改"), tr("留下") };
    // Without an answer of its own a test's responder continues as the
    // window always did: the edits are not written.
    switch (Messages::choose(m_window, tr("未写入的修改"), text, choices, DiscardChoice, StayChoice)) {
    case WriteChoice:
        writeSections(sections);
        return true;
    case DiscardChoice:
        discard();
        return true;
    default:
        return false;
    }
}

// The user chose to write in the question, so the write's own confirmation is
// not asked a second time.
void EditTracker::writeSections(QVector<int> sections)
{
    // The SBUS page writes the port it shows, and showing the other port
    // refills it from the record: the shown port goes first, so that its
    // edits are in the record before the page turns to the other one.
    auto *sbus = m_hub ? qobject_cast<SbusConfig *>(m_hub->page(SectionSbus1)) : nullptr;
    if (sbus && sections.removeOne(sbus->port()))
        sections.prepend(sbus->port());
    const int shownPort = sbus ? sbus->port() : 0;
    for (int section : sections) {
        if (sbus && (section == SectionSbus1 || section == SectionSbus2) && sbus->port() != section)
            sbus->showSection(section);
        m_write(section);
    }
    if (sbus && sbus->port() != shownPort)
        sbus->showSection(shownPort);
    refresh();
}

// The pages show again what the unit holds, for every group it has told.
void EditTracker::discard()
{
    UnwrittenEdits::copyGroups(m_known, m_record, m_answered, m_model);
    if (m_hub)
        m_hub->refreshPages();
    refresh();
}
