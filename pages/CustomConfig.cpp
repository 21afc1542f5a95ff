#include "CustomConfig.h"

#include "CanFrame.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "MCheckBox.h"
#include "MDlg.h"
#include "Messages.h"
#include "PageHost.h"
#include "PyxModuleFile.h"
#include "SectionColumn.h"
#include "SectionWidgets.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include <functional>

using namespace CustomOutputCodec;

namespace
{

enum Section { OutputSection = 0, CanSection = 1, TtlSection = 2 };

QLineEdit *field(const char *name, const QString &pattern, int maxLength, QWidget *parent)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    edit->setValidator(new QRegularExpressionValidator(QRegularExpression(pattern), edit));
    edit->setMaxLength(maxLength);
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QString(maxLength + 2, QLatin1Char('0'))) + 8);
    return edit;
}

QComboBox *combo(const char *name, const QStringList &items, QWidget *parent)
{
    auto *box = new QComboBox(parent);
    box->setObjectName(QLatin1String(name));
    box->addItems(items);
    // Wide enough for its longest item next to the style sheet's arrow.
    int widest = 0;
    for (const QString &item : items)
        widest = qMax(widest, box->fontMetrics().horizontalAdvance(item));
    box->setMinimumWidth(widest + 40);
    return box;
}

MCheckBox *enableSwitch(const char *name, const QString &text, QWidget *parent)
{
    MCheckBox *toggle = SectionWidgets::checkItem(parent, QLatin1String(name), text);
    toggle->setMinimumWidth(toggle->sizeHint().width() + 8);
    return toggle;
}

// Widgets side by side, as one cell of a form.
QWidget *row(QWidget *parent, std::initializer_list<QWidget *> widgets)
{
    auto *box = new QWidget(parent);
    auto *layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    for (QWidget *w : widgets) {
        w->setParent(box);
        layout->addWidget(w);
    }
    layout->addStretch(1);
    return box;
}

QString hexByte(int value)
{
    return QString::number(value & 0xFF, 16).rightJustified(2, QLatin1Char('0')).toUpper();
}

} // namespace

CustomConfig::CustomConfig(QWidget *parent)
    : SettingPage(parent)
{
    setObjectName(QStringLiteral("CustomConfig"));
    // The model's inputs for the frame editors; without the file the lists
    // stay empty and the editors offer only "NONE".
    PageHost *host = PageHost::instance();
    PyxModuleFile::load(PyxModuleFile::path(), host ? host->currentModel() : 0, record());

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    m_column = new SectionColumn(this);
    layout->addWidget(m_column);
    m_column->addSection(QStringLiteral("PyxSetting"), tr("  Pyx设置"), buildOutputSection());
    m_column->addSection(QStringLiteral("customCAN"), tr("  CAN设置"), buildCanSection());
    m_column->addSection(QStringLiteral("customTTL"), tr("  自定义串口设置"), buildTtlSection());
    connect(m_column->dropDownButton(OutputSection), &QPushButton::clicked, this,
        &CustomConfig::on_dropDownButton_0_clicked);
    connect(m_column->dropDownButton(CanSection), &QPushButton::clicked, this,
        &CustomConfig::on_dropDownButton_1_clicked);
    connect(m_column->dropDownButton(TtlSection), &QPushButton::clicked, this,
        &CustomConfig::on_dropDownButton_2_clicked);
    for (int s = 0; s < m_column->sectionCount(); ++s)
        m_column->setExpanded(s, true);
}

QWidget *CustomConfig::buildOutputSection()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("outputBody"));
    body->setParent(this);
    auto *layout = new QVBoxLayout(body);
    layout->setContentsMargins(14, 10, 14, 10);
    QList<QWidget *> items { new QLabel(tr("输出模式 : "), body) };
    const QString texts[] = { QStringLiteral("SBUS"), QStringLiteral("TTL"), QStringLiteral("RS232") };
    for (int k = 0; k < 3; ++k) {
        MCheckBox *toggle
            = SectionWidgets::radioItem(body, QStringLiteral("canOutputMode_%1").arg(k), texts[k]);
        toggle->setMinimumWidth(toggle->sizeHint().width() + 16);
        connect(toggle, &MCheckBox::checkedChange, this, &CustomConfig::slot_canModeCheckedChange);
        m_modes[size_t(k)] = toggle;
        items << toggle;
    }
    auto *modes = new QHBoxLayout;
    modes->setSpacing(12);
    for (QWidget *w : items)
        modes->addWidget(w);
    modes->addStretch(1);
    layout->addLayout(modes);
    auto *note = new QLabel(tr("注意：选择SBUS输出则无法与PyxM配合使用，CAN与自定义串口失能"), body);
    note->setObjectName(QStringLiteral("outputModeNote"));
    note->setWordWrap(true);
    layout->addWidget(note);
    return body;
}

QWidget *CustomConfig::buildCanSection()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("canBody"));
    body->setParent(this);
    auto *grid = new QGridLayout(body);
    grid->setContentsMargins(14, 10, 14, 10);
    grid->setHorizontalSpacing(16);

    m_canEnable = enableSwitch("canEnable", tr("使能"), body);
    m_canEnable->installEventFilter(this);
    m_canBaud = combo("canBaud", canBaudTexts(), body);
    m_canFre = field("canFre", QStringLiteral("[0-9]*"), 3, body);
    grid->addWidget(m_canEnable, 0, 0);
    grid->addWidget(row(body, { new QLabel(tr("波特率 : ")), m_canBaud }), 0, 1);
    grid->addWidget(
        row(body, { new QLabel(tr("发送频率 :")), m_canFre, new QLabel(QStringLiteral("Hz")) }), 0, 2);

    m_addFrame = new QPushButton(tr("添加帧"), body);
    m_addFrame->setObjectName(QStringLiteral("addFrame"));
    m_flushFrame = new QPushButton(tr("刷新帧"), body);
    m_flushFrame->setObjectName(QStringLiteral("flushFrame"));
    grid->addWidget(row(body, { m_addFrame, m_flushFrame }), 1, 0, 1, 3);
    grid->setColumnStretch(3, 1);

    m_frameList = new QWidget(body);
    m_frameList->setObjectName(QStringLiteral("canFrameList"));
    m_frameLayout = new QVBoxLayout(m_frameList);
    m_frameLayout->setContentsMargins(0, 0, 0, 0);
    m_frameLayout->setSpacing(6);
    grid->addWidget(m_frameList, 2, 0, 1, 4);

    connect(m_canFre, &QLineEdit::editingFinished, this, &CustomConfig::on_canFre_editingFinished);
    connect(m_addFrame, &QPushButton::clicked, this, &CustomConfig::on_addFrameButton_clicked);
    connect(m_canBaud, &QComboBox::currentTextChanged, this,
        [this](const QString &text) { record().CANBaud = text; });
    return body;
}

QWidget *CustomConfig::buildTtlSection()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("ttlBody"));
    body->setParent(this);
    auto *grid = new QGridLayout(body);
    grid->setContentsMargins(14, 10, 14, 10);
    grid->setHorizontalSpacing(16);

    m_ttlEnable = enableSwitch("ttlEnable", tr("使能"), body);
    m_ttlEnable->installEventFilter(this);
    m_ttlBaud = combo("ttlBaud", ttlBaudTexts(), body);
    m_ttlFre = field("ttlFre", QStringLiteral("[0-9]*"), 3, body);
    m_ttlHead = field("ttlFrameHead", QStringLiteral("[0-9A-Fa-f]*"), 2, body);
    m_ttlEnd = field("ttlFrameEnd", QStringLiteral("[0-9A-Fa-f]*"), 2, body);
    m_ttlOrder = combo("ttlFormat", { tr("小端"), tr("大端") }, body);
    m_ttlMin = field("ttlMin", QStringLiteral("-?[0-9]*"), 6, body);
    m_ttlMax = field("ttlMax", QStringLiteral("-?[0-9]*"), 6, body);
    m_ttlCheck = combo("ttlCheck", { tr("和校验"), tr("异或校验"), tr("CRC16校验"), tr("CRC32校验") }, body);

    grid->addWidget(m_ttlEnable, 0, 0);
    grid->addWidget(row(body, { new QLabel(tr("波特率 : ")), m_ttlBaud }), 0, 1);
    grid->addWidget(
        row(body, { new QLabel(tr("发送频率 :")), m_ttlFre, new QLabel(QStringLiteral("Hz")) }), 0, 2);
    grid->addWidget(row(body,
                        { new QLabel(tr("帧头")), new QLabel(QStringLiteral("0x")), m_ttlHead,
                            new QLabel(tr("帧尾")), new QLabel(QStringLiteral("0x")), m_ttlEnd }),
        1, 0, 1, 2);
    grid->addWidget(row(body, { new QLabel(tr("数据格式")), m_ttlOrder }), 1, 2);
    grid->addWidget(
        row(body,
            { new QLabel(tr("通道数据范围 : ")), m_ttlMin, new QLabel(QStringLiteral(" ~ ")), m_ttlMax }),
        2, 0, 1, 2);
    grid->addWidget(row(body, { new QLabel(tr("校验模式")), m_ttlCheck }), 2, 2);
    grid->setColumnStretch(3, 1);

    connect(m_ttlFre, &QLineEdit::editingFinished, this, &CustomConfig::on_ttlFre_editingFinished);
    connect(m_ttlHead, &QLineEdit::editingFinished, this, &CustomConfig::on_editFinished_ttlFrameHead);
    connect(m_ttlEnd, &QLineEdit::editingFinished, this, &CustomConfig::on_editFinished_ttlFrameEnd);
    connect(m_ttlMin, &QLineEdit::editingFinished, this, &CustomConfig::on_ttlMin_editingFinished);
    connect(m_ttlMax, &QLineEdit::editingFinished, this, &CustomConfig::on_ttlMax_editingFinished);
    for (QComboBox *box : { m_ttlBaud, m_ttlOrder, m_ttlCheck })
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &CustomConfig::takeTtlFormat);
    return body;
}

// ---------------------------------------------------------------- sections

void CustomConfig::on_dropDownButton_0_clicked()
{
    m_column->toggle(OutputSection);
}

void CustomConfig::on_dropDownButton_1_clicked()
{
    m_column->toggle(CanSection);
}

void CustomConfig::on_dropDownButton_2_clicked()
{
    m_column->toggle(TtlSection);
}

// ---------------------------------------------------------------- output mode

void CustomConfig::showOutputMode(int mode)
{
    for (int k = 0; k < 3; ++k)
        m_modes[size_t(k)]->setM_checked(k + 1 == mode);
    // SBUS leaves the output module nothing to send on CAN or the serial
    // stream: their switches go off and grey. TTL and RS232 make them
    // available again without switching them on.
    const bool available = mode != kModeSbus;
    for (MCheckBox *enable : { m_canEnable, m_ttlEnable }) {
        if (!available)
            enable->setM_checked(false);
        enable->setM_checkEnable(available);
    }
}

void CustomConfig::slot_canModeCheckedChange(QString name)
{
    const int mode = name.section(QLatin1Char('_'), 1).toInt() + 1;
    if (mode < kModeSbus || mode > kModeRs232)
        return;
    DeviceData &d = record();
    d.PyxGOutputMode = mode;
    if (mode == kModeSbus) {
        d.TTLEnable = false;
        d.CANEnable = false;
    }
    showOutputMode(mode);

    // Only a warning: the choice stands whatever the answer.
    MDlg *dialog = Messages::newDialog(this, true);
    dialog->setWindowTitle(QStringLiteral("Warning"));
    if (PageHost *host = PageHost::instance())
        dialog->setStyleSheet(host->dialogStyleSheet());
    dialog->setText(tr("注意: 切换硬件接口前,请确保当前接口线已断开连接!!!"));
    connect(dialog, &MDlg::signal_dialog, this, &CustomConfig::slot_dialog);
    if (!Messages::exec(dialog, this))
        return; // a reconnect rebuilt the pages meanwhile
    m_dialogAnswer = false;
}

void CustomConfig::slot_dialog(bool state)
{
    m_dialogAnswer = state;
}

// ---------------------------------------------------------------- fields

// Out-of-range numbers are clamped and written back, never refused.
void CustomConfig::takeFrequency(QLineEdit *edit, quint8 &target)
{
    const int value = qBound(kMinFrequency, edit->text().toInt(), kMaxFrequency);
    edit->setText(QString::number(value));
    target = quint8(value);
}

void CustomConfig::takeRange(QLineEdit *edit, int which)
{
    const int value = qBound(-kDataLimit, edit->text().toInt(), kDataLimit);
    edit->setText(QString::number(value));
    record().TTLStream.range[which] = quint16(qint16(value));
}

void CustomConfig::takeFrameByte(QLineEdit *edit, int header)
{
    const int value = int(edit->text().toUInt(nullptr, 16) & 0xFF);
    edit->setText(hexByte(value));
    record().TTLStream.header[header] = quint8(value);
}

void CustomConfig::takeTtlFormat()
{
    TtlFormat format;
    format.baud = qMax(0, m_ttlBaud->currentIndex());
    format.checksum = qMax(0, m_ttlCheck->currentIndex());
    format.bigEndian = m_ttlOrder->currentIndex() == 1;
    record().TTLStream.header[kTtlFormat] = ttlFormatByte(format);
}

void CustomConfig::on_canFre_editingFinished()
{
    takeFrequency(m_canFre, record().CANFrequency);
}

void CustomConfig::on_ttlFre_editingFinished()
{
    takeFrequency(m_ttlFre, record().TTLStream.header[kTtlFrequency]);
}

void CustomConfig::on_editFinished_ttlFrameHead()
{
    takeFrameByte(m_ttlHead, kTtlFrameHead);
}

void CustomConfig::on_editFinished_ttlFrameEnd()
{
    takeFrameByte(m_ttlEnd, kTtlFrameEnd);
}

// The minimum is held at -10000 and the maximum at 10000; each is also kept
// inside the other bound, so that it always fits the stream's 16 bits.
void CustomConfig::on_ttlMin_editingFinished()
{
    takeRange(m_ttlMin, 0);
}

void CustomConfig::on_ttlMax_editingFinished()
{
    takeRange(m_ttlMax, 1);
}

// ---------------------------------------------------------------- frames

void CustomConfig::on_addFrameButton_clicked()
{
    // Ten frames at most: the eleventh press adds nothing.
    if (CanFrameList::append(record()))
        syncFrameEditors();
}

void CustomConfig::removeFrame(int index)
{
    if (!CanFrameList::remove(record(), index))
        return;
    dropEditor(index);
    syncFrameEditors();
}

void CustomConfig::dropEditor(int position)
{
    CanFrame *editor = m_editors.takeAt(position);
    editor->detach();
    editor->hide();
    m_frameLayout->removeWidget(editor);
    // Later: the editor may be the one whose button asked for this.
    editor->deleteLater();
}

void CustomConfig::syncFrameEditors(int refreshOnly)
{
    const int wanted = record().canFrames.size();
    while (m_editors.size() > wanted)
        dropEditor(m_editors.size() - 1);
    const int existing = m_editors.size();
    while (m_editors.size() < wanted) {
        auto *editor = new CanFrame(record(), m_editors.size(), m_frameList);
        connect(editor, &CanFrame::signal_delFrame, this, &CustomConfig::removeFrame);
        m_frameLayout->addWidget(editor);
        m_editors.append(editor);
    }
    for (int i = 0; i < m_editors.size(); ++i) {
        m_editors[i]->setIndex(i);
        if (refreshOnly == kAllFrames || refreshOnly == i || i >= existing)
            m_editors[i]->refresh();
    }
}

// ---------------------------------------------------------------- record

void CustomConfig::showSwitches()
{
    m_canEnable->setM_checked(record().CANEnable);
    m_ttlEnable->setM_checked(record().TTLEnable);
}

void CustomConfig::takeSwitches()
{
    record().CANEnable = m_canEnable->checked();
    record().TTLEnable = m_ttlEnable->checked();
}

bool CustomConfig::eventFilter(QObject *watched, QEvent *event)
{
    // The switches have no signal of their own: once the press that toggled
    // one is over, the record takes what they show.
    if ((watched == m_canEnable || watched == m_ttlEnable) && event->type() == QEvent::MouseButtonRelease)
        takeSwitches();
    return SettingPage::eventFilter(watched, event);
}

void CustomConfig::showCanBaud()
{
    const QSignalBlocker block(m_canBaud);
    m_canBaud->setCurrentIndex(canBaudIndex(record().CANBaud));
}

void CustomConfig::refreshCan()
{
    showCanBaud();
    m_canFre->setText(QString::number(record().CANFrequency));
    syncFrameEditors(kAllFrames);
}

void CustomConfig::refreshTtl()
{
    const TtlStream &s = record().TTLStream;
    m_ttlFre->setText(QString::number(s.header[kTtlFrequency]));
    m_ttlHead->setText(hexByte(s.header[kTtlFrameHead]));
    m_ttlEnd->setText(hexByte(s.header[kTtlFrameEnd]));
    m_ttlMin->setText(QString::number(qint16(s.range[0])));
    m_ttlMax->setText(QString::number(qint16(s.range[1])));
    const TtlFormat format = ttlFormat(s.header[kTtlFormat]);
    for (QComboBox *box : { m_ttlBaud, m_ttlOrder, m_ttlCheck })
        box->blockSignals(true);
    m_ttlBaud->setCurrentIndex(format.baud < m_ttlBaud->count() ? format.baud : 0);
    m_ttlOrder->setCurrentIndex(format.bigEndian ? 1 : 0);
    m_ttlCheck->setCurrentIndex(format.checksum);
    for (QComboBox *box : { m_ttlBaud, m_ttlOrder, m_ttlCheck })
        box->blockSignals(false);
}

void CustomConfig::refreshFromRecord()
{
    showSwitches();
    refreshCan();
    refreshTtl();
    showOutputMode(record().PyxGOutputMode);
}

void CustomConfig::collect()
{
    DeviceData &d = record();
    for (int k = 0; k < 3; ++k) {
        if (m_modes[size_t(k)]->checked())
            d.PyxGOutputMode = k + 1;
    }
    takeSwitches();
    // The field's text as an unsigned number, its low byte: what has not
    // been clamped yet goes out as typed.
    d.CANFrequency = quint8(m_canFre->text().toUInt() & 0xFF);
    d.CANBaud = m_canBaud->currentText();
    for (CanFrame *editor : m_editors) {
        editor->collect();
        // The unit's values for extended and remote stay in the record.
        if (CanFrameRecord *f = editor->frame()) {
            f->ide = quint8(f->ide ? 4 : 0);
            f->rtr = quint8(f->rtr ? 2 : 0);
        }
    }
    if (d.canFrames.isEmpty())
        d.CANFrameCnt = 0;
    takeFrequency(m_ttlFre, d.TTLStream.header[kTtlFrequency]);
    takeFrameByte(m_ttlHead, kTtlFrameHead);
    takeFrameByte(m_ttlEnd, kTtlFrameEnd);
    takeRange(m_ttlMin, 0);
    takeRange(m_ttlMax, 1);
    takeTtlFormat();
}

QList<QByteArray> CustomConfig::collectPayloads()
{
    collect();
    return CustomOutputCodec::payloadsFromRecord(record());
}

QList<QByteArray> CustomConfig::payloadsFromRecord()
{
    return CustomOutputCodec::payloadsFromRecord(record());
}

QString CustomConfig::fileFragment()
{
    // The switches as the page shows them.
    takeSwitches();
    return CustomOutputCodec::fileFragment(record());
}

void CustomConfig::slot_information(CodeID code, QByteArray data)
{
    // Each answer shows only what it carries: a switch, field or frame the
    // user has changed keeps the change until an answer about it arrives.
    using Decoder = bool (*)(const QByteArray &, DeviceData &);
    Decoder decode = nullptr;
    std::function<void()> show;
    switch (code) {
    case OutputModuleRead:
        decode = decodeOutputMode;
        show = [this] { showOutputMode(record().PyxGOutputMode); };
        break;
    case CustomOutputD1:
        decode = decodeEnables;
        show = [this] { showSwitches(); };
        break;
    case CustomOutputD3:
        decode = decodeCanFrequency;
        show = [this] { m_canFre->setText(QString::number(record().CANFrequency)); };
        break;
    case CustomOutputD5:
        decode = decodeFrameCount;
        show = [this, data] {
            // A frame's header came with the count: that frame's editor shows it.
            const int named = data.size() == kFrameHeaderBytes ? quint8(data.at(1)) : -1;
            syncFrameEditors(named);
        };
        break;
    case CustomOutputD7:
        decode = decodeStreamHead;
        show = [this] { refreshTtl(); };
        break;
    case CustomOutputD9:
        decode = decodeStreamTable; // the tables have no controls here
        break;
    case CustomOutputDB:
        decode = decodeFrameMasks;
        break;
    case CustomOutputDD:
        decode = decodeFrameBitChannels;
        break;
    case CanMapping20:
        decode = decodeFrameBitValues;
        break;
    case CanMapping22:
        decode = decodeFrameByteChannels;
        break;
    case CanMapping24:
        decode = decodeCanBaud;
        show = [this] { showCanBaud(); };
        break;
    default:
        return;
    }
    // The mapping answers change what the mapping windows show when they
    // open; the editors show none of it.
    if (decode(data, record()) && show)
        show();
}
