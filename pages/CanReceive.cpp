#include "CanReceive.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTextDocument>
#include <QTextEdit>
#include <QtEndian>

namespace
{
constexpr int kFrameHead = 9; // ids, IDE, RTR, data length
constexpr int kMaxData = 8; // a CAN frame carries at most 8 data bytes
// The view keeps the latest frames; a unit reporting for hours must not
// grow it without end.
constexpr int kKeptLines = 2000;
constexpr int kColumnGap = 16; // pixels between a column's widest field and the next column
}

canReceive::canReceive(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("CAN Receive Frame"));
    auto *grid = new QGridLayout(this);
    grid->addWidget(new QLabel(tr("接收计数 :"), this), 0, 0);
    lineEdit_count = new QLineEdit(QStringLiteral("0"), this);
    lineEdit_count->setObjectName(QStringLiteral("lineEdit_count"));
    lineEdit_count->setReadOnly(true);
    grid->addWidget(lineEdit_count, 0, 1);
    auto *clear = new QPushButton(QStringLiteral("Clear"), this);
    clear->setObjectName(QStringLiteral("pushButton_clear"));
    grid->addWidget(clear, 0, 3);

    textEdit = new QTextEdit(this);
    textEdit->setObjectName(QStringLiteral("textEdit"));
    textEdit->setReadOnly(true);
    textEdit->document()->setMaximumBlockCount(kKeptLines);
    // One frame a line: the data bytes never wrap under the identifiers.
    textEdit->setLineWrapMode(QTextEdit::NoWrap);

    // The fields of a line are separated by tabs; every column is one tab
    // stop wide, wide enough for its widest field and for its heading, and
    // each heading stands exactly above its column.
    const QStringList headingTexts { tr("标识符类型"), tr("标准ID"), tr("扩展ID"), tr("数据类型") };
    const QFontMetrics text(textEdit->font());
    int widest = 0;
    for (const QString &field :
        { QStringLiteral("Standard"), QStringLiteral("REMOTE"), QStringLiteral("DDDDDDDD") })
        widest = qMax(widest, text.horizontalAdvance(field));
    const QFontMetrics heading(font());
    for (const QString &h : headingTexts)
        widest = qMax(widest, heading.horizontalAdvance(h));
    const int stop = widest + kColumnGap;
    textEdit->setTabStopDistance(stop);

    auto *headings = new QHBoxLayout;
    headings->setSpacing(0);
    const int indent = textEdit->frameWidth() + int(textEdit->document()->documentMargin());
    headings->setContentsMargins(indent, 0, 0, 0);
    for (const QString &h : headingTexts) {
        auto *label = new QLabel(h, this);
        label->setFixedWidth(stop);
        headings->addWidget(label);
    }
    headings->addStretch(1);
    grid->addLayout(headings, 1, 0, 1, 4);
    grid->addWidget(textEdit, 2, 0, 1, 4);

    // Five columns (the data length one of them), then up to eight bytes.
    const int line = 5 * stop + text.horizontalAdvance(QStringLiteral("DD DD DD DD DD DD DD DD"));
    resize(qMax(560, line + 2 * indent + textEdit->verticalScrollBar()->sizeHint().width() + 24), 360);

    connect(clear, &QPushButton::clicked, this, [this] {
        textEdit->clear();
        m_count = 0;
        lineEdit_count->setText(QStringLiteral("0"));
    });
}

QString canReceive::frameLine(const QByteArray &payload)
{
    if (payload.size() < kFrameHead)
        return QString();
    const auto *d = reinterpret_cast<const uchar *>(payload.constData());
    const quint16 standardId = qFromLittleEndian<quint16>(d);
    const quint32 extendedId = qFromLittleEndian<quint32>(d + 2);
    const bool extended = d[6] != 0;
    const bool remote = d[7] != 0;
    const int length = qMin(qMin<int>(d[8], kMaxData), payload.size() - kFrameHead);
    QStringList data;
    for (int i = 0; i < length; ++i)
        data.append(QStringLiteral("%1").arg(d[kFrameHead + i], 2, 16, QLatin1Char('0')).toUpper());
    return QStringLiteral("%1\t%2\t%3\t%4\t%5\t%6\n")
        .arg(extended ? QStringLiteral("Extend") : QStringLiteral("Standard"))
        .arg(QString::number(standardId, 16).rightJustified(4, QLatin1Char('0')).toUpper())
        .arg(QString::number(extendedId, 16).rightJustified(8, QLatin1Char('0')).toUpper())
        .arg(remote ? QStringLiteral("REMOTE") : QStringLiteral("DATA"))
        .arg(d[8])
        .arg(data.join(QLatin1Char(' ')));
}

void canReceive::addFrame(const QByteArray &payload)
{
    const QString line = frameLine(payload);
    if (line.isEmpty())
        return;
    ++m_count;
    lineEdit_count->setText(QString::number(m_count));
    textEdit->moveCursor(QTextCursor::End);
    textEdit->insertPlainText(line);
}
