#include "CanFrame.h"

#include "DataWidget.h"
#include "DeviceData.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>

namespace
{
constexpr int kStdDigits = 4;
constexpr int kExtDigits = 8;

QString hex(quint32 value, int digits)
{
    return QString::number(value, 16).rightJustified(digits, QLatin1Char('0')).toUpper();
}

QLineEdit *hexEdit(const char *name, int digits, QWidget *parent)
{
    auto *edit = new QLineEdit(QString(digits, QLatin1Char('0')), parent);
    edit->setObjectName(QLatin1String(name));
    edit->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9A-Fa-f]*")), edit));
    edit->setMaxLength(digits);
    const int width = edit->fontMetrics().horizontalAdvance(QString(digits + 2, QLatin1Char('W')));
    edit->setFixedWidth(width);
    return edit;
}

// "0x" before a hexadecimal field, as one row.
QWidget *prefixed(QLineEdit *edit, QWidget *parent)
{
    auto *box = new QWidget(parent);
    auto *row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    row->addWidget(new QLabel(QStringLiteral("0x"), box));
    edit->setParent(box);
    row->addWidget(edit);
    return box;
}
} // namespace

CanFrame::CanFrame(DeviceData &data, int index, QWidget *parent)
    : QWidget(parent)
    , m_data(data)
    , m_index(index)
{
    setObjectName(QStringLiteral("canFrame_%1").arg(index));
    setAttribute(Qt::WA_StyledBackground, true);
    setStyleSheet(QStringLiteral("CanFrame { border: 1px solid rgb(155, 155, 155); border-radius: 4px; }"));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(8, 6, 8, 6);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(6);

    m_title = new QLabel(this);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    grid->addWidget(m_title, 0, 0);

    m_std = hexEdit("stdId", kStdDigits, this);
    m_ext = hexEdit("extId", kExtDigits, this);
    grid->addWidget(new QLabel(tr("标准ID"), this), 0, 1);
    grid->addWidget(prefixed(m_std, this), 0, 2);
    grid->addWidget(new QLabel(tr("扩展ID"), this), 0, 3);
    grid->addWidget(prefixed(m_ext, this), 0, 4);

    m_ide = new QComboBox(this);
    m_ide->setObjectName(QStringLiteral("ide"));
    m_ide->addItems({ tr("标准标识符"), tr("扩展标识符") });
    m_rtr = new QComboBox(this);
    m_rtr->setObjectName(QStringLiteral("rtr"));
    m_rtr->addItems({ tr("数据帧"), tr("远程帧") });
    for (QComboBox *box : { m_ide, m_rtr }) {
        int widest = 0;
        for (int i = 0; i < box->count(); ++i)
            widest = qMax(widest, box->fontMetrics().horizontalAdvance(box->itemText(i)));
        box->setMinimumWidth(widest + 40);
    }
    grid->addWidget(new QLabel(tr("标识符类型"), this), 1, 1);
    grid->addWidget(m_ide, 1, 2, Qt::AlignLeft);
    grid->addWidget(new QLabel(tr("消息类型"), this), 1, 3);
    grid->addWidget(m_rtr, 1, 4, Qt::AlignLeft);

    grid->addWidget(new QLabel(tr("数据长度"), this), 2, 1);
    m_length = new QLineEdit(QStringLiteral("0"), this);
    m_length->setObjectName(QStringLiteral("dataLength"));
    m_length->setReadOnly(true);
    m_length->setFocusPolicy(Qt::NoFocus);
    m_length->setFixedWidth(m_length->fontMetrics().horizontalAdvance(QStringLiteral("WWW")));
    grid->addWidget(m_length, 2, 2, Qt::AlignLeft);

    m_dataPrase = new QPushButton(tr("数据解析"), this);
    m_dataPrase->setObjectName(QStringLiteral("dataPrase"));
    m_delete = new QPushButton(tr("删除"), this);
    m_delete->setObjectName(QStringLiteral("delFrame"));
    grid->addWidget(m_dataPrase, 0, 5);
    grid->addWidget(m_delete, 1, 5);
    grid->setColumnStretch(6, 1);

    connect(m_std, &QLineEdit::editingFinished, this, &CanFrame::on_editFinished_Std);
    connect(m_ext, &QLineEdit::editingFinished, this, &CanFrame::on_editFinished_Ext);
    connect(m_ide, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &CanFrame::on_ide_currentIndexChanged);
    connect(m_rtr, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &CanFrame::on_rtr_currentIndexChanged);
    connect(m_dataPrase, &QPushButton::clicked, this, &CanFrame::on_buttonClicked_dataPrase);
    connect(m_delete, &QPushButton::clicked, this, &CanFrame::on_delButton_clicked);

    setIndex(index);
}

void CanFrame::setIndex(int index)
{
    m_index = index;
    m_title->setText(tr("帧 %1").arg(index));
    if (m_dataWidget)
        m_dataWidget->updateTitle();
}

void CanFrame::detach()
{
    m_index = -1;
    if (m_dataWidget)
        m_dataWidget->close();
    setEnabled(false);
}

DataWidget *CanFrame::dataWidget() const
{
    return m_dataWidget;
}

CanFrameRecord *CanFrame::frame() const
{
    return m_index >= 0 && m_index < m_data.canFrames.size() ? &m_data.canFrames[m_index] : nullptr;
}

void CanFrame::refresh()
{
    const CanFrameRecord *f = frame();
    if (!f)
        return;
    m_std->setText(hex(f->standardId, kStdDigits));
    m_ext->setText(hex(f->extendedId, kExtDigits));
    const QSignalBlocker ideBlock(m_ide);
    const QSignalBlocker rtrBlock(m_rtr);
    m_ide->setCurrentIndex(f->ide ? 1 : 0);
    m_rtr->setCurrentIndex(f->rtr ? 1 : 0);
    m_length->setText(QString::number(f->dlc));
}

void CanFrame::collect()
{
    takeIdentifier(m_std, kStdDigits);
    takeIdentifier(m_ext, kExtDigits);
    if (CanFrameRecord *f = frame()) {
        f->ide = quint8(m_ide->currentIndex() > 0 ? 1 : 0);
        f->rtr = quint8(m_rtr->currentIndex() > 0 ? 1 : 0);
    }
}

// Left-padded to its digits and written back; taken as typed, so a standard
// identifier up to FFFF passes although CAN has only 11 bits for it.
void CanFrame::takeIdentifier(QLineEdit *edit, int digits)
{
    const QString text = edit->text().rightJustified(digits, QLatin1Char('0')).toUpper();
    edit->setText(text);
    CanFrameRecord *f = frame();
    if (!f)
        return;
    const quint32 value = text.toUInt(nullptr, 16);
    if (digits == kStdDigits)
        f->standardId = quint16(value);
    else
        f->extendedId = value;
}

void CanFrame::on_editFinished_Std()
{
    takeIdentifier(m_std, kStdDigits);
}

void CanFrame::on_editFinished_Ext()
{
    takeIdentifier(m_ext, kExtDigits);
}

void CanFrame::on_ide_currentIndexChanged(int index)
{
    if (CanFrameRecord *f = frame())
        f->ide = quint8(index > 0 ? 1 : 0);
}

void CanFrame::on_rtr_currentIndexChanged(int index)
{
    if (CanFrameRecord *f = frame())
        f->rtr = quint8(index > 0 ? 1 : 0);
}

void CanFrame::on_buttonClicked_dataPrase()
{
    if (!frame())
        return;
    if (!m_dataWidget)
        m_dataWidget = new DataWidget(this);
    m_dataWidget->load();
    m_dataWidget->show();
    m_dataWidget->raise();
    m_dataWidget->activateWindow();
}

void CanFrame::on_delButton_clicked()
{
    if (m_index >= 0)
        Q_EMIT signal_delFrame(m_index);
}
