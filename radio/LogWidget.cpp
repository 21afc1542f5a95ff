#include "LogWidget.h"

#include "BusyWait.h"
#include "LinkPlot.h"
#include "LogRows.h"
#include "ModuleAddress.h"
#include "RadioLog.h"
#include "RadioResources.h"
#include "WindowFit.h"
#include "ui_LogWidget.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDateTime>
#include <QPointer>
#include <QScreen>
#include <QSpacerItem>
#include <QSplitter>
#include <QTcpSocket>
#include <QTimer>

using LinkReport::LinkRecord;
using LinkReport::ModuleKind;
using LinkReport::ReportKind;

namespace
{
const char kPolling[] = "urgent";
const char kConnectStyle[] = "image: url(:/button/image/connect.svg);";
const char kDisconnectStyle[] = "image: url(:/button/image/disconnect.svg);";
constexpr int kPollMs = LinkHistory::kPollMs;
constexpr int kConnectWaitMs = 1000;
// After each press the button stays disabled this long: the module's web
// server copes badly with connections opened and dropped in quick turns.
constexpr int kDebounceMs = 3000;
// A link report is a few kB even with many nodes. A module that sends more
// than this after one poll is cut off rather than filling the log file and
// the memory; the next tick connects again.
constexpr qint64 kMaxReplyBytes = 1024 * 1024;
// Room for a few nodes' rows and the history plot under them.
const QSize kStartSize(760, 680);

void logChecked(QButtonGroup *group, int id, bool checked)
{
    if (!checked)
        return;
    if (QAbstractButton *button = group->button(id))
        qCDebug(lcRadio, "%s is checked.", qPrintable(button->objectName()));
}
} // namespace

logWidget::logWidget(QWidget *parent)
    : QWidget(parent, Qt::Window)
    , ui(new Ui::logWidget)
    , m_socket(new QTcpSocket(this))
    , m_timer(new QTimer(this))
    , m_connectWait(new QTimer(this))
{
    initRadioResources();
    ui->setupUi(this);
    // The table above, the history plot below, the user sharing the height.
    m_plot = new LinkPlot(&m_history, this);
    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->setObjectName(QStringLiteral("splitter_log"));
    splitter->setChildrenCollapsible(false);
    ui->verticalLayout->removeWidget(ui->scrollArea);
    splitter->addWidget(ui->scrollArea);
    splitter->addWidget(m_plot);
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 3);
    splitter->setSizes({ 2000, 3000 });
    ui->verticalLayout->addWidget(splitter, 1);
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        resize(WindowFit::place(kStartSize, screen->availableGeometry()).size());
    setAttribute(Qt::WA_DeleteOnClose);
    ui->lineEdit_ip->setText(ModuleAddress::startAddress());
    ui->module_kite->setChecked(true);
    ui->mode_center->setChecked(true);
    ui->link->setProperty(kPolling, false);

    m_socket->setReadBufferSize(kMaxReplyBytes);
    connect(m_timer, &QTimer::timeout, this, &logWidget::on_timeout);
    connect(m_socket, &QTcpSocket::readyRead, this, &logWidget::ReadData);
    connect(m_socket, &QTcpSocket::connected, this, &logWidget::writePendingRequest);
    m_connectWait->setSingleShot(true);
    connect(m_connectWait, &QTimer::timeout, this, &logWidget::giveUpConnecting);
#if QT_VERSION >= QT_VERSION_CHECK(5, 15, 0)
    connect(ui->buttonGroup_module, &QButtonGroup::idToggled, this, &logWidget::slot_btn1Toggled);
    connect(ui->buttonGroup_mode, &QButtonGroup::idToggled, this, &logWidget::slot_btn2Toggled);
#else
    connect(ui->buttonGroup_module, QOverload<int, bool>::of(&QButtonGroup::buttonToggled), this,
        &logWidget::slot_btn1Toggled);
    connect(ui->buttonGroup_mode, QOverload<int, bool>::of(&QButtonGroup::buttonToggled), this,
        &logWidget::slot_btn2Toggled);
#endif
    resetRows();
}

logWidget::~logWidget()
{
    delete ui;
}

LinkHistory &logWidget::history()
{
    return m_history;
}

void logWidget::on_link_clicked()
{
    QPointer<logWidget> self(this);
    ui->link->setEnabled(false);
    if (!ui->link->property(kPolling).toBool())
        startPolling();
    else
        stopPolling();
    // A deliberate three-second pause before the next press; the window
    // keeps working meanwhile (polls run, replies are shown).
    busyWait(kDebounceMs);
    if (!self)
        return; // closed during the pause
    ui->link->setEnabled(true);
}

void logWidget::startPolling()
{
    ui->link->setProperty(kPolling, true);
    ui->link->setStyleSheet(QLatin1String(kDisconnectStyle));
    setInputsEnabled(false);
    m_kind = ModuleKind::None;
    m_accessRecords.clear();
    m_centreRecords.clear();
    m_meshRecords.clear();
    if (ui->module_kite->isChecked())
        m_kind = ModuleKind::Kite;
    else if (ui->module_kestrel->isChecked())
        m_kind = ModuleKind::Kestrel;
    else
        m_kind = ModuleKind::Falcon;
    m_pollDue = false;
    m_timer->start(kPollMs);
}

void logWidget::stopPolling()
{
    ui->link->setProperty(kPolling, false);
    ui->link->setStyleSheet(QLatin1String(kConnectStyle));
    setInputsEnabled(true);
    m_connectWait->stop();
    m_pendingRequest.clear();
    m_socket->close();
    m_timer->stop();
    // Polling again later must not join the lines across the pause.
    m_pollDue = false;
    m_history.addGap(QDateTime::currentMSecsSinceEpoch());
    m_plot->refresh();
}

void logWidget::setInputsEnabled(bool enabled)
{
    const QList<QWidget *> inputs { ui->lineEdit_ip, ui->module_kite, ui->module_kestrel, ui->module_falcon,
        ui->mode_center, ui->mode_access };
    for (QWidget *input : inputs)
        input->setEnabled(enabled);
}

void logWidget::on_timeout()
{
    if (m_pollDue && !m_answered) {
        m_history.addGap(QDateTime::currentMSecsSinceEpoch());
        m_plot->refresh();
    }
    m_pollDue = true;
    m_answered = false;
    const QString typed = ui->lineEdit_ip->text();
    const QByteArray request
        = LinkReport::request(typed, LinkReport::command(m_kind, ui->mode_center->isChecked()));
    if (m_socket->state() == QAbstractSocket::UnconnectedState) {
        // Connecting must not freeze the window: the request goes out when
        // the connection is up, and a connection not up within a second is
        // given up until the next tick.
        const ModuleAddress::Endpoint endpoint = ModuleAddress::parse(typed);
        if (endpoint.valid) {
            m_pendingRequest = request;
            ModuleAddress::guard(endpoint);
            m_socket->connectToHost(endpoint.host, endpoint.port, QIODevice::ReadWrite);
            m_connectWait->start(kConnectWaitMs);
        }
    } else if (m_socket->state() == QAbstractSocket::ConnectedState) {
        m_received = 0;
        m_socket->write(request);
    }
    resetRows();
}

void logWidget::writePendingRequest()
{
    m_connectWait->stop();
    m_received = 0;
    if (!m_pendingRequest.isEmpty())
        m_socket->write(m_pendingRequest);
    m_pendingRequest.clear();
}

void logWidget::giveUpConnecting()
{
    m_pendingRequest.clear();
    if (m_socket->state() != QAbstractSocket::ConnectedState)
        m_socket->abort();
}

void logWidget::ReadData()
{
    const QByteArray bytes = m_socket->readAll();
    m_received += bytes.size();
    if (m_received > kMaxReplyBytes) {
        qCDebug(lcRadio) << "reply too long, connection dropped";
        m_socket->abort();
        return;
    }
    QByteArray report;
    if (!LinkReport::reportText(bytes, &report))
        return;
    const ReportKind kind = LinkReport::reportKind(m_kind, ui->mode_center->isChecked());
    QFile &log = kind == ReportKind::Mesh ? m_meshLog
        : kind == ReportKind::Centre      ? m_centreLog
                                          : m_accessLog;
    QVector<LinkRecord> &records = kind == ReportKind::Mesh ? m_meshRecords
        : kind == ReportKind::Centre                        ? m_centreRecords
                                                            : m_accessRecords;
    if (!LinkReport::appendToLog(log, kind, ui->lineEdit_ip->text(), report))
        qCDebug(lcRadio) << "cannot open the log file" << log.fileName();
    records = LinkReport::parseReport(report, kind, m_kind);
    showRecords(records);
    if (!records.isEmpty()) {
        m_answered = true;
        m_history.addReport(QDateTime::currentMSecsSinceEpoch(), records);
        m_plot->refresh();
    }
}

void logWidget::slot_btn1Toggled(int id, bool checked)
{
    logChecked(ui->buttonGroup_module, id, checked);
}

void logWidget::slot_btn2Toggled(int id, bool checked)
{
    logChecked(ui->buttonGroup_mode, id, checked);
}

void logWidget::resetRows()
{
    QLayout *rows = ui->verticalLayout_log;
    while (QLayoutItem *item = rows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    rows->addWidget(new LOG_TITLE(ui->scrollAreaWidgetContents));
    rows->addItem(new QSpacerItem(20, 20, QSizePolicy::Preferred, QSizePolicy::Expanding));
}

void logWidget::showRecords(const QVector<LinkRecord> &records)
{
    QVBoxLayout *rows = ui->verticalLayout_log;
    // The rows of an earlier reply since the last tick make way.
    for (int i = rows->count() - 1; i >= 0; --i) {
        if (qobject_cast<LOG_ITEM *>(rows->itemAt(i)->widget())) {
            QLayoutItem *item = rows->takeAt(i);
            delete item->widget();
            delete item;
        }
    }
    int above = rows->count();
    if (above > 0 && rows->itemAt(above - 1)->spacerItem())
        --above;
    for (const LinkRecord &record : records)
        rows->insertWidget(above++, new LOG_ITEM(record, ui->scrollAreaWidgetContents));
}
