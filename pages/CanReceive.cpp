#include "CanReceive.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextDocument>
#include <QTextEdit>
#include <QtEndian>

namespace {
constexpr int kFrameHead = 9; // ids, IDE, RTR, data length
constexpr int kMaxData = 8;   // a CAN frame carries at most 8 data bytes
// The view keeps the latest frames; a unit reporting for hours must not
// grow it without end.
constexpr int kKeptLines = 2000;
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

    auto *headings = new QHBoxLayout;
    for (const QString &heading : { tr("标识符类型"), tr("标准ID"), tr("扩展ID"), tr("数据类型") })
        headings->addWidget(new QLabel(heading, this));
    grid->addLayout(headings, 1, 0, 1, 4);

    textEdit = new QTextEdit(this);
    textEdit->setObjectName(QStringLiteral("textEdit"));
    textEdit->setReadOnly(true);
    textEdit->document()->setMaximumBlockCount(kKeptLines);
    grid->addWidget(textEdit, 2, 0, 1, 4);
    resize(560, 360);

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
