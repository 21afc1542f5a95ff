#include "RFParaConfig.h"

#include "LogWidget.h"
#include "Messages.h"
#include "ModuleAddress.h"
#include "ModuleLabels.h"
#include "ModuleReplies.h"
#include "PageHost.h"
#include "RadioLog.h"
#include "RadioResources.h"
#include "StyleSheetFile.h"
#include "WindowFit.h"
#include "ui_RFParaConfig.h"

#include <QCursor>
#include <QDateTime>
#include <QGuiApplication>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QScreen>
#include <QTcpSocket>
#include <QTimer>

#include <memory>

namespace
{

constexpr int kConnectWaitMs = 5000;
constexpr int kReconnectWaitMs = 3000;
constexpr int kTickMs = 5000;
// Every post ends after this long, answered or not: the module's web server
// may accept a connection and never answer, and the network layer takes only
// six posts to one module at a time, so hung posts would hold up every later
// one. A post that runs out of time is a network error. Shorter than the
// tick, so that temperature posts never pile up.
constexpr int kReplyWaitMs = 4000;
// The module's replies are short texts; the kernel messages behind the
// temperature are the longest. A reply is cut off as soon as it grows beyond
// this, while it arrives, and counts as a network error instead of filling
// the memory.
constexpr qint64 kMaxReplyBytes = 16 * 1024 * 1024;

// How much of a reply the network layer may read ahead of the window. Without
// a limit its own thread keeps reading from the socket while the window is
// still counting, and a fast flood is in memory long before it is cut.
constexpr qint64 kReadAheadBytes = 256 * 1024;

const char kUrgent[] = "urgent";
// Marks a post whose reply may come after a disconnect (the module's new
// address): disconnecting leaves it to finish or run out of time.
const char kOutlivesConnection[] = "quillmarkOutlivesConnection";

QString iconStyle(const char *icon, bool active)
{
    return QStringLiteral("image: url(:/button/image/%1%2.svg);")
        .arg(QLatin1String(icon), active ? QString() : QStringLiteral("_gray"));
}

} // namespace

RFParaConfig::RFParaConfig(QWidget *parent)
    : QWidget(parent)
    , ui(new Ui::RFParaConfig)
    , m_network(new QNetworkAccessManager(this))
    , m_socket(new QTcpSocket(this))
    , m_timer(new QTimer(this))
{
    initRadioResources();
    ui->setupUi(this);
    applyStyleSheet();
    fitToScreen();
    ui->refresh_all_progress->hide();
    ui->lineEdit_ip->setText(ModuleAddress::startAddress());
    ui->link->setProperty(kUrgent, false);

    // The module sits on the local network: a proxy configured for the
    // desktop must never see its traffic.
    m_network->setProxy(QNetworkProxy::NoProxy);
    m_socket->setProxy(QNetworkProxy::NoProxy);

    for (QLineEdit *part : { ui->ip_1, ui->ip_2, ui->ip_3, ui->ip_4 })
        part->setValidator(new QIntValidator(1, 255, part));

    m_refreshButtons = { ui->device_switch_flush, ui->device_restart_flush, ui->band_flush, ui->passwd_flush,
        ui->mode_flush, ui->ip_flush, ui->hopping_flush, ui->dstc_flush, ui->dssmtp_flush, ui->group_flush,
        ui->dsonscap_flush };
    m_setButtons = { ui->device_switch_config, ui->device_restart_config, ui->band_config, ui->passwd_config,
        ui->mode_config, ui->ip_config, ui->hopping_config, ui->dstc_config, ui->dssmtp_config,
        ui->group_config, ui->dsonscap_config, ui->atCmd_config };
    updateRowButtons();
    setDsonscapRowVisible(false);
    // The console keeps the reply's text as it came; the view wraps long
    // lines, also those without a blank.
    ui->display->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    ui->display->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    // The reply gets the larger share; the history beside it holds one line
    // per command.
    ui->splitter_console->setStretchFactor(0, 3);
    ui->splitter_console->setStretchFactor(1, 2);

    connect(m_timer, &QTimer::timeout, this, &RFParaConfig::on_timeout);
    connect(m_socket, &QTcpSocket::connected, this, [this] { finishProbe(true); });
    // A connection attempt that fails ends with the socket unconnected again.
    connect(m_socket, &QTcpSocket::stateChanged, this, [this](QAbstractSocket::SocketState state) {
        if (state == QAbstractSocket::UnconnectedState)
            finishProbe(false);
    });
}

RFParaConfig::~RFParaConfig()
{
    // Whatever is still under way dies with the window without reaching it.
    for (QNetworkReply *reply : m_network->findChildren<QNetworkReply *>())
        reply->disconnect(this);
    m_socket->disconnect(this);
    delete ui;
}

// ---- connection ----

void RFParaConfig::on_link_clicked()
{
    ui->link->setEnabled(false);
    if (ui->link->property(kUrgent).toBool()) {
        m_probe = Probe::None;
        ++m_probeAttempt;
        m_socket->abort();
        m_timer->stop();
        ui->temperature->clear();
        setConnected(false);
        ui->link->setEnabled(true);
        return;
    }
    // The address stays as it is while the module is tried, so that the
    // forms later go where the probe went.
    ui->lineEdit_ip->setEnabled(false);
    startProbe(Probe::Connect, kConnectWaitMs);
}

void RFParaConfig::on_timeout()
{
    if (m_probe != Probe::None)
        return; // the previous tick is still trying to reach the module
    if (m_socket->state() == QAbstractSocket::ConnectedState) {
        post(ModuleForms::temperature(), [this](bool failed, const QByteArray &body) {
            if (!ui->link->property(kUrgent).toBool())
                return; // a late reply after the user disconnected
            if (failed) {
                ui->temperature->clear();
                return;
            }
            if (const auto value = ModuleReplies::temperature(body))
                ui->temperature->setText(ModuleLabels::temperature(*value));
        });
        return;
    }
    startProbe(Probe::Reconnect, kReconnectWaitMs);
}

void RFParaConfig::startProbe(Probe kind, int waitMs)
{
    m_socket->abort();
    m_probe = kind;
    const ModuleAddress::Endpoint endpoint = ModuleAddress::parse(ui->lineEdit_ip->text());
    if (!endpoint.valid) {
        finishProbe(false); // an address that cannot be reached at all
        return;
    }
    ModuleAddress::guard(endpoint);
    // The wait runs beside the event loop: the window stays responsive.
    QTimer::singleShot(waitMs, this, [this, attempt = ++m_probeAttempt] {
        if (attempt != m_probeAttempt)
            return; // that attempt ended already
        m_socket->abort();
        finishProbe(false);
    });
    m_socket->connectToHost(
        endpoint.host, endpoint.port, QIODevice::ReadWrite, QAbstractSocket::AnyIPProtocol);
}

void RFParaConfig::finishProbe(bool reached)
{
    if (m_probe == Probe::None)
        return; // the socket's own news while no probe is under way
    const Probe kind = m_probe;
    m_probe = Probe::None;
    ++m_probeAttempt; // its deadline no longer counts
    qCDebug(lcRadio) << "module" << ui->lineEdit_ip->text() << (reached ? "reached" : "not reached");
    if (kind == Probe::Connect) {
        if (reached) {
            setConnected(true);
            m_timer->start(kTickMs);
        } else {
            connectionFailed();
        }
        ui->link->setEnabled(true);
    } else if (kind == Probe::Reconnect && !reached) {
        m_timer->stop();
        ui->temperature->clear();
        connectionFailed();
    }
}

void RFParaConfig::connectionFailed()
{
    m_socket->abort();
    setConnected(false);
    showMessage(tr("连接失败"), tr("无法访问主机"));
}

void RFParaConfig::setConnected(bool connected)
{
    if (!connected) {
        abortReplies();
        endRefreshAll();
    }
    ui->link->setProperty(kUrgent, connected);
    ui->link->setStyleSheet(iconStyle(connected ? "disconnect" : "connect", true));
    ui->lineEdit_ip->setEnabled(!connected);
    m_nodeType = -1; // learnt again from the module on every connection
    updateRowButtons();
}

// ---- row buttons ----

bool RFParaConfig::rowAllowed(const QPushButton *button) const
{
    // Hopping and the slot ratio are settings of a centre node, the maximum
    // transmit power one of an access node.
    if (button == ui->hopping_flush || button == ui->hopping_config || button == ui->dstc_flush
        || button == ui->dstc_config)
        return m_nodeType == 1;
    if (button == ui->dssmtp_flush || button == ui->dssmtp_config)
        return m_nodeType == 2;
    return true;
}

void RFParaConfig::updateRowButtons()
{
    const bool connected = ui->link->property(kUrgent).toBool();
    for (QPushButton *button : qAsConst(m_refreshButtons)) {
        const bool active = connected && rowAllowed(button);
        button->setEnabled(active);
        button->setStyleSheet(iconStyle("flush", active));
    }
    for (QPushButton *button : qAsConst(m_setButtons)) {
        const bool active = connected && rowAllowed(button);
        button->setEnabled(active);
        button->setStyleSheet(iconStyle("config", active));
    }
    ui->drpr_log_create->setEnabled(connected);
    ui->drpr_log_create->setStyleSheet(iconStyle("add", connected));
    ui->refresh_all->setEnabled(connected);
}

void RFParaConfig::setDsonscapRowVisible(bool visible)
{
    for (QWidget *w : std::initializer_list<QWidget *> { ui->label_dsonscap, ui->dsonscap_info,
             ui->dsonscap_mode, ui->dsonscap_flush, ui->dsonscap_config })
        w->setVisible(visible);
}

void RFParaConfig::on_falcon_series_toggled(bool checked)
{
    // Falcon modules have a 500/600M band where the others have 800M, no
    // 2.4G band, and carrier aggregation / MIMO settings.
    ui->radio_800M->setText(checked ? QStringLiteral("500/600M") : QStringLiteral("800M"));
    ui->radio_2400M->setVisible(!checked);
    setDsonscapRowVisible(checked);
}

void RFParaConfig::showMessage(const QString &title, const QString &text)
{
    Messages::information(this, title, text);
}

void RFParaConfig::fitToScreen()
{
    QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (screen)
        setGeometry(WindowFit::place(size(), screen->availableGeometry()));
}

void RFParaConfig::applyStyleSheet()
{
    // The main window's look; a window opened without one reads the same file.
    if (PageHost *host = PageHost::instance())
        setStyleSheet(host->dialogStyleSheet());
    else if (const auto sheet = StyleSheetFile::read())
        setStyleSheet(*sheet);
}

// ---- posting ----

QNetworkReply *RFParaConfig::post(const ModuleForms::Form &form, ReplyHandler handler)
{
    const QUrl url = ModuleForms::url(ui->lineEdit_ip->text(), form.endpoint);
    // Guard the host the request really goes to.
    ModuleAddress::Endpoint target;
    target.host = url.host();
    target.port = quint16(url.port(80));
    target.valid = url.isValid() && !target.host.isEmpty();
    if (!target.valid) {
        handler(true, QByteArray());
        return nullptr;
    }
    ModuleAddress::guard(target);

    QNetworkRequest request(url);
    request.setHeader(
        QNetworkRequest::ContentTypeHeader, QStringLiteral("application/x-www-form-urlencoded"));
    qCDebug(lcRadio) << "post" << url.toString() << form.body;
    QNetworkReply *reply = m_network->post(request, ModuleForms::bodyBytes(form));
    m_lastPost = reply;
    // Qt passes the limit on to its network thread only once the request is
    // under way there, and a post starts on the next pass of the event loop:
    // set now, the limit would be lost. Queued behind that start, it arrives
    // before the connection to the module is even made.
    QMetaObject::invokeMethod(
        reply, [reply] { reply->setReadBufferSize(kReadAheadBytes); }, Qt::QueuedConnection);
    // The body is checked against the bound as each piece arrives (the
    // progress signal comes too seldom for that) and taken out of the reply.
    auto body = std::make_shared<QByteArray>();
    connect(reply, &QNetworkReply::readyRead, reply, [reply, body] {
        if (body->size() + reply->bytesAvailable() > kMaxReplyBytes) {
            body->clear();
            reply->abort();
            return;
        }
        *body += reply->readAll();
    });
    auto *deadline = new QTimer(reply);
    deadline->setSingleShot(true);
    connect(deadline, &QTimer::timeout, reply, [reply] {
        qCDebug(lcRadio) << "no reply in time" << reply->url().path();
        reply->abort();
    });
    deadline->start(kReplyWaitMs);
    connect(reply, &QNetworkReply::finished, this, [reply, body, handler = std::move(handler)] {
        const bool tooLong = body->size() + reply->bytesAvailable() > kMaxReplyBytes;
        if (reply->error() == QNetworkReply::NoError && !tooLong)
            *body += reply->readAll();
        const bool failed = reply->error() != QNetworkReply::NoError || tooLong;
        if (failed)
            body->clear();
        qCDebug(lcRadio) << "reply" << reply->url().path()
                         << (failed ? reply->errorString() : QString::fromLocal8Bit(body->left(200)));
        reply->deleteLater();
        handler(failed, *body);
    });
    return reply;
}

void RFParaConfig::abortReplies()
{
    // The replies of a connection the user ended are of no use any more:
    // they end here, without a message.
    for (QNetworkReply *reply : m_network->findChildren<QNetworkReply *>()) {
        if (reply->property(kOutlivesConnection).toBool() || reply->isFinished())
            continue;
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
}

void RFParaConfig::query(const char *command, AnswerHandler handler)
{
    post(ModuleForms::atCommand(QLatin1String(command)),
        [handler = std::move(handler)](bool failed, const QByteArray &body) {
            if (!failed)
                handler(body);
        });
}

void RFParaConfig::postSet(const ModuleForms::Form &form, QPushButton *refresh)
{
    post(form, [this, refresh](bool failed, const QByteArray &body) {
        const ModuleReplies::SetResult result = ModuleReplies::setResult(failed, body);
        if (result != ModuleReplies::SetResult::Ignored)
            setDone(result == ModuleReplies::SetResult::Succeeded, refresh);
    });
}

void RFParaConfig::setDone(bool succeeded, QPushButton *refresh)
{
    if (!succeeded) {
        showMessage(tr("更新"), tr("更新失败"));
        return;
    }
    showMessage(tr("更新"), tr("更新成功"));
    QMetaObject::invokeMethod(refresh, &QPushButton::click, Qt::QueuedConnection);
}

void RFParaConfig::selectionSet(const char *prefix, int index, QPushButton *refresh)
{
    const auto command = ModuleForms::selectionCommand(prefix, index);
    if (!command) {
        showMessage(tr("警告"), tr("请选择一个选项!"));
        return;
    }
    postSet(ModuleForms::atCommand(*command), refresh);
}

// ---- rows ----

void RFParaConfig::on_device_switch_flush_clicked()
{
    query(ModuleForms::kQueryModem, [this](const QByteArray &body) {
        if (const auto on = ModuleReplies::modemSwitch(body)) {
            const QString text = ModuleLabels::currentValue(ModuleLabels::onOff(*on));
            ui->device_switch_info->setText(text);
            ui->device_restart_info->setText(text);
        }
    });
}

void RFParaConfig::on_device_switch_config_clicked()
{
    selectionSet(ModuleForms::kSetModem, ui->device_switch->currentIndex(), ui->device_switch_flush);
}

void RFParaConfig::on_device_restart_flush_clicked()
{
    on_device_switch_flush_clicked();
}

void RFParaConfig::on_device_restart_config_clicked()
{
    // The restart form answers with a page of its own: any reply is success.
    post(ModuleForms::restart(),
        [this](bool failed, const QByteArray &) { setDone(!failed, ui->device_restart_flush); });
}

void RFParaConfig::on_band_flush_clicked()
{
    query(ModuleForms::kQueryBands, [this](const QByteArray &body) {
        const auto bits = ModuleReplies::bands(body);
        if (!bits)
            return;
        ui->band_info->setText(ModuleLabels::bands(*bits));
        const ModuleLabels::BandButtons checked = ModuleLabels::bandButtons(*bits);
        ui->radio_800M->setChecked(checked.band800);
        ui->radio_1400M->setChecked(checked.band1400);
        ui->radio_2400M->setChecked(checked.band2400);
    });
}

void RFParaConfig::on_band_config_clicked()
{
    const auto command = ModuleForms::bandCommand(ui->radio_800M->isChecked(), ui->radio_1400M->isChecked(),
        ui->radio_2400M->isChecked(), ui->falcon_series->isChecked());
    if (!command) {
        showMessage(tr("警告"), tr("请选择一个频段!"));
        return;
    }
    postSet(ModuleForms::atCommand(*command), ui->band_flush);
}

void RFParaConfig::on_passwd_flush_clicked()
{
    query(ModuleForms::kQueryLinkKey, [this](const QByteArray &body) {
        if (const auto key = ModuleReplies::linkKey(body)) {
            ui->passwd_info->setText(ModuleLabels::currentValue(*key));
            // A key of up to 64 digits has no place to wrap: on a narrow
            // screen the label is cut, and its tip shows the whole key.
            ui->passwd_info->setToolTip(*key);
        }
    });
}

void RFParaConfig::on_passwd_config_clicked()
{
    const QString key = ui->passwd->text();
    if (!ModuleForms::keyAcceptable(key)) {
        showMessage(
            tr("警告"), tr("十六进制输入，即0~9，A~F或a~f，长度不超过64个字符，即32个字节。必须偶数"));
        return;
    }
    postSet(ModuleForms::linkKey(key), ui->passwd_flush);
}

void RFParaConfig::on_mode_flush_clicked()
{
    query(ModuleForms::kQueryNodeType, [this](const QByteArray &body) {
        const auto types = ModuleReplies::nodeTypes(body);
        if (!types)
            return;
        const QString current = ModuleLabels::currentType(types->current);
        const QString configured = ModuleLabels::configuredType(types->configured);
        if (!current.isEmpty())
            ui->mode_cur_info->setText(current);
        if (!configured.isEmpty())
            ui->mode_set_info->setText(configured);
        if (ui->link->property(kUrgent).toBool()) {
            m_nodeType = types->current;
            updateRowButtons();
        }
    });
}

void RFParaConfig::on_mode_config_clicked()
{
    const int index = ui->mode->currentIndex();
    if (index < 0) {
        showMessage(tr("警告"), tr("请选择一个选项!"));
        return;
    }
    postSet(ModuleForms::nodeType(index), ui->mode_flush);
}

void RFParaConfig::on_ip_flush_clicked()
{
    query(ModuleForms::kQueryIp, [this](const QByteArray &body) {
        if (const auto address = ModuleReplies::moduleIp(body))
            ui->ip_info->setText(ModuleLabels::ip(*address));
    });
}

void RFParaConfig::on_ip_config_clicked()
{
    const auto address
        = ModuleForms::joinIp({ ui->ip_1->text(), ui->ip_2->text(), ui->ip_3->text(), ui->ip_4->text() });
    if (!address) {
        showMessage(tr("警告"), tr("请输入完整的IP地址!"));
        return;
    }
    // The module moves to the new address at once and its answer may never
    // come back here: the user reconnects at the new address.
    if (QNetworkReply *reply = post(ModuleForms::moduleIp(*address), [](bool, const QByteArray &) {}))
        reply->setProperty(kOutlivesConnection, true);
    showMessage(tr("更新"), tr("更新成功"));
    ui->link->click();
}

void RFParaConfig::on_hopping_flush_clicked()
{
    query(ModuleForms::kQueryHopping, [this](const QByteArray &body) {
        if (const auto on = ModuleReplies::hopping(body))
            ui->hopping_info->setText(ModuleLabels::currentValue(ModuleLabels::onOff(*on)));
    });
}

void RFParaConfig::on_hopping_config_clicked()
{
    selectionSet(ModuleForms::kSetHopping, ui->hopping->currentIndex(), ui->hopping_flush);
}

void RFParaConfig::on_dstc_flush_clicked()
{
    query(ModuleForms::kQuerySlotRatio, [this](const QByteArray &body) {
        if (const auto ratio = ModuleReplies::slotRatio(body))
            ui->dstc_info->setText(ModuleLabels::currentValue(ui->dstc->itemText(*ratio)));
    });
}

void RFParaConfig::on_dstc_config_clicked()
{
    selectionSet(ModuleForms::kSetSlotRatio, ui->dstc->currentIndex(), ui->dstc_flush);
}

void RFParaConfig::on_dssmtp_flush_clicked()
{
    query(ModuleForms::kQueryMaxPower, [this](const QByteArray &body) {
        if (const auto power = ModuleReplies::maxPower(body))
            ui->dssmtp_info->setText(ModuleLabels::maxPower(*power));
    });
}

void RFParaConfig::on_dssmtp_config_clicked()
{
    postSet(ModuleForms::atCommand(ModuleForms::maxPowerCommand(ui->dssmtp->text())), ui->dssmtp_flush);
}

void RFParaConfig::on_group_flush_clicked()
{
    query(ModuleForms::kQueryLinkGroup, [this](const QByteArray &body) {
        const auto group = ModuleReplies::linkGroup(body, ui->falcon_series->isChecked());
        if (!group)
            return;
        ui->fre_point_info->setText(ModuleLabels::currentValue(QString::number(group->frequency)));
        ui->baud_info->setText(
            ModuleLabels::currentValue(ui->baud->itemText(ModuleLabels::bandwidthItem(group->bandwidth))));
        ui->power_info->setText(ModuleLabels::currentValue(QString::number(group->power)));
    });
}

void RFParaConfig::on_group_config_clicked()
{
    const QString command = ModuleForms::linkGroupCommand(
        ui->fre_point->text(), ui->baud->currentIndex(), ui->baud->count(), ui->power->text());
    postSet(ModuleForms::atCommand(command), ui->group_flush);
}

void RFParaConfig::on_dsonscap_flush_clicked()
{
    query(ModuleForms::kQueryCarrier, [this](const QByteArray &body) {
        if (const auto mode = ModuleReplies::carrierAggregation(body))
            ui->dsonscap_info->setText(ModuleLabels::carrier(ui->dsonscap_mode->itemText(*mode)));
    });
}

void RFParaConfig::on_dsonscap_config_clicked()
{
    selectionSet(ModuleForms::kSetCarrier, ui->dsonscap_mode->currentIndex(), ui->dsonscap_flush);
}

void RFParaConfig::on_drpr_log_create_clicked()
{
    (new logWidget)->show(); // a window of its own, deleted when closed
}

void RFParaConfig::on_atCmd_config_clicked()
{
    const QString command = ui->atCmd->text();
    if (command.isEmpty()) {
        showMessage(tr("警告"), tr("请输入AT指令!"));
        return;
    }
    addToHistory(command);
    post(ModuleForms::atCommand(command), [this](bool failed, const QByteArray &body) {
        if (failed) {
            showMessage(tr("更新"), tr("更新失败"));
            return;
        }
        ui->display->setPlainText(ModuleLabels::consoleText(body));
    });
}

// ---- refresh all ----

QVector<RefreshSequence::Step> RFParaConfig::refreshSteps() const
{
    using namespace ModuleForms;
    const std::pair<QPushButton *, const char *> rows[] = { { ui->device_switch_flush, kQueryModem },
        { ui->device_restart_flush, kQueryModem }, { ui->band_flush, kQueryBands },
        { ui->passwd_flush, kQueryLinkKey }, { ui->mode_flush, kQueryNodeType }, { ui->ip_flush, kQueryIp },
        { ui->hopping_flush, kQueryHopping }, { ui->dstc_flush, kQuerySlotRatio },
        { ui->dssmtp_flush, kQueryMaxPower }, { ui->group_flush, kQueryLinkGroup },
        { ui->dsonscap_flush, kQueryCarrier } };
    QVector<RefreshSequence::Step> steps;
    for (const auto &row : rows) {
        // The carrier row exists only on Falcon modules.
        if (row.first->isVisibleTo(this))
            steps.append({ row.first->objectName(), QLatin1String(row.second) });
    }
    return steps;
}

void RFParaConfig::on_refresh_all_clicked()
{
    if (m_refreshAll.running()) {
        endRefreshAll();
        return;
    }
    m_refreshAll.start(refreshSteps());
    ++m_refreshRun;
    ui->refresh_all->setText(tr("停止"));
    ui->refresh_all_progress->setRange(0, m_refreshAll.total());
    ui->refresh_all_progress->setValue(0);
    ui->refresh_all_progress->show();
    refreshNext();
}

void RFParaConfig::refreshNext()
{
    while (const auto step = m_refreshAll.next()) {
        ui->refresh_all_progress->setValue(m_refreshAll.begun());
        auto *button = findChild<QPushButton *>(step->button);
        // A row the module's node type does not have stays grey: the user
        // could not click it either. The node type is asked before them.
        if (!button || !button->isEnabled())
            continue;
        m_lastPost = nullptr;
        button->click();
        QNetworkReply *reply = m_lastPost;
        m_lastPost = nullptr;
        if (!reply)
            continue; // nothing went out
        // Queued: the row's own reply handler has filled its labels first.
        connect(
            reply, &QNetworkReply::finished, this,
            [this, run = m_refreshRun] {
                if (run == m_refreshRun)
                    refreshNext();
            },
            Qt::QueuedConnection);
        return;
    }
    endRefreshAll();
}

void RFParaConfig::endRefreshAll()
{
    // A query under way still fills its row; nothing after it is asked.
    m_refreshAll.stop();
    ++m_refreshRun;
    ui->refresh_all->setText(tr("全部刷新"));
    ui->refresh_all_progress->hide();
}

// ---- console history ----

void RFParaConfig::addToHistory(const QString &command)
{
    if (m_history.add(command, QDateTime::currentDateTime()))
        delete ui->atCmd_history->takeItem(0);
    ui->atCmd_history->addItem(CommandHistory::line(m_history.entries().constLast()));
    ui->atCmd_history->scrollToBottom();
}

void RFParaConfig::on_atCmd_history_itemDoubleClicked(QListWidgetItem *item)
{
    // Picked again into the input, not sent: the user may change it first.
    const QString command = m_history.command(ui->atCmd_history->row(item));
    if (command.isEmpty())
        return;
    ui->atCmd->setText(command);
    ui->atCmd->setFocus();
}
