#include "PortChooser.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSerialPortInfo>
#include <QVBoxLayout>

QString PortChooser::entryText(const Entry &entry)
{
    QString text = entry.path;
    if (!entry.description.isEmpty())
        text += QStringLiteral(" — ") + entry.description;
    if (entry.hasIds)
        text += QStringLiteral(" (%1:%2)")
                    .arg(entry.vendorId, 4, 16, QLatin1Char('0'))
                    .arg(entry.productId, 4, 16, QLatin1Char('0'));
    return text;
}

PortChooser::PortChooser(QWidget *parent)
    : QWidget(parent)
    , m_problem(new QLabel(this))
    , m_ports(new QComboBox(this))
    , m_refresh(new QPushButton(tr("刷新"), this))
    , m_connect(new QPushButton(tr("连接"), this))
{
    setObjectName(QStringLiteral("portChooser"));
    m_problem->setObjectName(QStringLiteral("portProblem"));
    m_problem->setWordWrap(true);
    m_problem->setAlignment(Qt::AlignCenter);
    m_problem->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_ports->setObjectName(QStringLiteral("portList"));
    m_ports->setEditable(true);
    m_ports->setInsertPolicy(QComboBox::NoInsert);
    m_ports->setMinimumContentsLength(40);
    m_ports->lineEdit()->setPlaceholderText(tr("串口路径，例如 /dev/ttyUSB0"));
    m_ports->setToolTip(tr("选择遥控器所在的串口，或输入它的路径"));
    m_refresh->setObjectName(QStringLiteral("portRefresh"));
    m_connect->setObjectName(QStringLiteral("portConnect"));
    m_connect->setDefault(true);

    auto *row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(new QLabel(tr("串口："), this));
    row->addWidget(m_ports, 0);
    row->addWidget(m_refresh);
    row->addWidget(m_connect);
    row->addStretch(1);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_problem);
    layout->addLayout(row);

    connect(m_refresh, &QPushButton::clicked, this, &PortChooser::refresh);
    connect(m_connect, &QPushButton::clicked, this, [this] {
        const QString path = chosenPath();
        if (!path.isEmpty())
            Q_EMIT connectRequested(path);
    });
    connect(m_ports->lineEdit(), &QLineEdit::returnPressed, m_connect, &QPushButton::click);
    refresh();
}

void PortChooser::setProblem(const QString &text)
{
    m_problem->setText(text);
}

QString PortChooser::problem() const
{
    return m_problem->text();
}

void PortChooser::refresh()
{
    const QString typed = m_ports->currentText();
    m_ports->clear();
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts()) {
        Entry entry;
        entry.path = info.systemLocation();
        entry.description = info.description();
        entry.hasIds = info.hasVendorIdentifier() && info.hasProductIdentifier();
        entry.vendorId = info.vendorIdentifier();
        entry.productId = info.productIdentifier();
        m_ports->addItem(entryText(entry), entry.path);
    }
    if (typed.isEmpty() && m_ports->count() > 0)
        m_ports->setCurrentIndex(0);
    else
        m_ports->setEditText(typed);
}

QString PortChooser::chosenPath() const
{
    const QString text = m_ports->currentText().trimmed();
    const int index = m_ports->findText(text);
    return index >= 0 ? m_ports->itemData(index).toString() : text;
}
