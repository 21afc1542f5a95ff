#include "ModelInterface.h"

#include "AppPaths.h"
#include "ControlColors.h"
#include "ControlLayers.h"
#include "CtlButton.h"
#include "Dial.h"
#include "ModelPages.h"
#include "ModelSpec.h"
#include "PageHost.h"
#include "Rocker.h"
#include "RotaryKnob.h"
#include "SbusChannel.h"
#include "SteeringWheel.h"
#include "Switch.h"

#include <QCloseEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPushButton>

namespace {
constexpr int kChannels = 16;
constexpr int kFrameInterval = 30; // ms between two frames of the live page
constexpr int kColumnGap = 60;
constexpr int kMargin = 10;
constexpr int kStickRadius = 10;

QRect placeIn(const QRect &area, const QRectF &fraction)
{
    return QRect(area.left() + int(fraction.x() * area.width()), area.top() + int(fraction.y() * area.height()),
                 int(fraction.width() * area.width()), int(fraction.height() * area.height()));
}

QRect centredSquare(const QRect &r)
{
    const int side = qMax(0, qMin(r.width(), r.height()));
    return QRect(r.left() + (r.width() - side) / 2, r.top() + (r.height() - side) / 2, side, side);
}
} // namespace

// What the layout and the page's pixmap were made for.
struct ModelInterface::LayoutKey {
    QSize size;
    qreal ratio = 0;
    QFont font;
    bool calibrating = false;
    QString calibrationText;
    QSize listenSize; // the channel configuration button's own size, text and style

    bool operator==(const LayoutKey &o) const
    {
        return size == o.size && ratio == o.ratio && font == o.font && calibrating == o.calibrating
            && calibrationText == o.calibrationText && listenSize == o.listenSize;
    }
};

// The widgets of one page part, in the order of the model's parts.
struct ModelInterface::Controls {
    std::array<std::array<SbusChannel *, kChannels>, 2> bars {};
    QVector<QWidget *> parts;           // one per part (nullptr for lamp rows and pictures)
    QVector<QVector<CtlButton *>> lamps; // one list per part
    QVector<bool> stopLit;              // per part: the stop light is on
    QPixmap stopLight;
    QPixmap stopGray;
    QVector<QRect> stopPlaces; // per part: where a stop light is drawn
    QVector<QPixmap> pictures;          // per part: Picture parts
    QPixmap backdrop; // the page's own drawing at its current size
};

ModelInterface::ModelInterface(const ModelSpec &layout, QWidget *parent)
    : QWidget(parent)
    , m_spec(layout)
    , m_controls(new Controls)
    , m_frameInterval(kFrameInterval)
{
    // The page covers itself entirely (see layOut): the window beneath it
    // need not be painted first.
    setAttribute(Qt::WA_OpaquePaintEvent);
    // SBUS bars first, then the unit's controls.
    for (int port = 0; port < 2; ++port) {
        for (int ch = 0; ch < kChannels; ++ch) {
            auto *bar = new SbusChannel(this);
            bar->setObjectName(QStringLiteral("sbus%1_ch%2").arg(port + 1).arg(ch + 1));
            bar->setM_index(0);
            if (port == 0 && m_spec.sbus1StartsFull)
                bar->setM_val(150);
            m_controls->bars[size_t(port)][size_t(ch)] = bar;
        }
    }

    const int count = m_spec.parts.size();
    m_controls->parts.fill(nullptr, count);
    m_controls->lamps.resize(count);
    m_controls->stopLit.fill(false, count);
    m_controls->stopPlaces.resize(count);
    m_controls->pictures.resize(count);
    for (int i = 0; i < count; ++i) {
        const PartSpec &part = m_spec.parts.at(i);
        QWidget *widget = nullptr;
        switch (part.kind) {
        case PartKind::Stick: {
            auto *rocker = new Rocker(this);
            rocker->setM_radius(kStickRadius);
            rocker->setM_is_z_axis(part.word3 >= 0);
            widget = rocker;
            break;
        }
        case PartKind::Knob:
            widget = new RotaryKnob(this);
            break;
        case PartKind::LeftDial:
        case PartKind::RightDial: {
            auto *dial = new Dial(this);
            dial->setM_direction(part.kind == PartKind::LeftDial ? 0 : 1);
            widget = dial;
            break;
        }
        case PartKind::Switch: {
            auto *lever = new Switch(this);
            lever->setM_direction(part.vertical);
            widget = lever;
            break;
        }
        case PartKind::Pad:
            widget = new SteeringWheel(this, 1);
            break;
        case PartKind::Lamps:
            for (const QString &caption : part.captions) {
                auto *lamp = new CtlButton(this);
                lamp->setObjectName(QStringLiteral("key_") + caption);
                lamp->setText(caption);
                lamp->setM_state(0);
                m_controls->lamps[i].append(lamp);
            }
            break;
        case PartKind::Picture:
            m_controls->pictures[i] = QPixmap(AppPaths::file(part.picture));
            break;
        case PartKind::StopLight:
            break;
        }
        if (widget) {
            widget->setObjectName(part.label.isEmpty() ? QStringLiteral("part%1").arg(i) : part.label);
            m_controls->parts[i] = widget;
        }
    }
    m_controls->stopLight = QPixmap(AppPaths::file(QStringLiteral("/image/stop_light.png")));
    m_controls->stopGray = QPixmap(AppPaths::file(QStringLiteral("/image/stop_gray.png")));

    channelCalibration = new QPushButton(tr("遥杆校准"), this);
    channelCalibration->setObjectName(QStringLiteral("channelCalibration"));
    channelCalibration->hide();
    channelListen = new QPushButton(tr("通道配置"), this);
    channelListen->setObjectName(QStringLiteral("channelListen"));
    m_pendingTimer.setSingleShot(true);
    connect(&m_pendingTimer, &QTimer::timeout, this, [this] {
        m_sinceFrame.start();
        applyReport(m_pending);
    });
    connect(channelCalibration, &QPushButton::clicked, this, &ModelInterface::on_channelCalibration_clicked);
    connect(channelListen, &QPushButton::clicked, this, &ModelInterface::on_channelConfig_clicked);
}

ModelInterface::~ModelInterface()
{
    delete m_controls;
}

// ---------------------------------------------------------------- answers

void ModelInterface::slot_information(CodeID code, QByteArray data)
{
    switch (code) {
    case ChannelDataReport: {
        ChannelReport report;
        if (ChannelReport::decode(data, m_spec.k, m_spec.keyWords, report))
            showReport(report);
        break;
    }
    case CalibrationStarted:
        if (!data.isEmpty())
            break;
        m_calibrating = true;
        channelCalibration->setText(tr("完成校准"));
        update();
        break;
    case CalibrationFinished:
        // One byte: the unit's status, 0xEE when the finish failed. Either
        // way the calibration is over.
        if (data.size() != 1)
            break;
        m_calibrating = false;
        channelCalibration->setText(tr("遥杆校准"));
        update();
        break;
    default:
        break;
    }
}

// The unit reports 50 times a second. Each frame of a real window costs a
// round trip to the X server and a flush whatever is painted, more than the
// painting itself. So the page draws a frame at most every 30 ms: at the
// unit's rate every other report, 25 frames a second, each with the newest
// values. A report left waiting is drawn 30 ms later if no other report
// comes first.
void ModelInterface::showReport(const ChannelReport &report)
{
    if (m_sinceFrame.isValid() && m_sinceFrame.elapsed() < m_frameInterval) {
        m_pending = report;
        m_pendingTimer.start(m_frameInterval);
        return;
    }
    m_pendingTimer.stop();
    m_sinceFrame.start();
    applyReport(report);
}

void ModelInterface::applyReport(const ChannelReport &report)
{
    for (int port = 0; port < 2; ++port)
        for (int ch = 0; ch < kChannels; ++ch)
            m_controls->bars[size_t(port)][size_t(ch)]->setM_val(ReportScale::bar(report.sbus[port][ch]));

    auto word = [&report](int index) { return index >= 0 && index < report.controlWords.size()
                                                  ? int(report.controlWords.at(index))
                                                  : ReportScale::kCentre; };
    for (int i = 0; i < m_spec.parts.size(); ++i) {
        const PartSpec &part = m_spec.parts.at(i);
        QWidget *widget = m_controls->parts.at(i);
        const quint16 keys = report.keyWords[part.keyWord];
        switch (part.kind) {
        case PartKind::Stick: {
            auto *rocker = static_cast<Rocker *>(widget);
            rocker->setM_position(ReportScale::stick(word(part.word), word(part.word2)));
            if (part.word3 >= 0)
                rocker->setM_z_axis_per(ReportScale::twist(word(part.word3)));
            break;
        }
        case PartKind::Knob:
            static_cast<RotaryKnob *>(widget)->setM_position(ReportScale::knob(word(part.word)));
            break;
        case PartKind::LeftDial:
            static_cast<Dial *>(widget)->setM_position(ReportScale::leftDial(word(part.word)));
            break;
        case PartKind::RightDial:
            static_cast<Dial *>(widget)->setM_position(ReportScale::rightDial(word(part.word)));
            break;
        case PartKind::Switch:
            static_cast<Switch *>(widget)->setM_index(ReportScale::switchIndex(word(part.word)));
            break;
        case PartKind::Lamps: {
            const QVector<CtlButton *> &row = m_controls->lamps.at(i);
            for (int b = 0; b < row.size(); ++b)
                row.at(b)->setM_state(ReportScale::lamp(keys, part.firstBit + b));
            break;
        }
        case PartKind::Pad: {
            auto *pad = static_cast<SteeringWheel *>(widget);
            // The pad's flags are plain members: repaint only when one changes.
            const bool flags[] = { ReportScale::lamp(keys, part.firstBit) == 1,
                ReportScale::lamp(keys, part.firstBit + 1) == 1,
                ReportScale::lamp(keys, part.firstBit + 2) == 1,
                ReportScale::lamp(keys, part.firstBit + 3) == 1,
                ReportScale::lamp(keys, part.firstBit + 4) == 1 };
            bool *members[] = { &pad->m_up, &pad->m_left, &pad->m_down, &pad->m_right, &pad->m_centre };
            bool changed = false;
            for (int f = 0; f < 5; ++f) {
                changed = changed || *members[f] != flags[f];
                *members[f] = flags[f];
            }
            if (changed)
                pad->update();
            break;
        }
        case PartKind::StopLight: {
            // Larch takes the stop flag from a key bit, Rowan from its last
            // switch pushed to the far end.
            const bool lit = part.word >= 0 ? ReportScale::switchIndex(word(part.word)) == 2
                                            : ReportScale::lamp(keys, part.firstBit) == 1;
            if (lit != m_controls->stopLit.at(i)) {
                m_controls->stopLit[i] = lit;
                update(m_controls->stopPlaces.at(i));
            }
            break;
        }
        case PartKind::Picture:
            break;
        }
    }
}

// ---------------------------------------------------------------- buttons

void ModelInterface::on_channelCalibration_clicked()
{
    // The state changes only when the unit answers (codes 23 and 24).
    if (m_calibrating)
        Q_EMIT signal_finishCalibration();
    else
        Q_EMIT signal_startupCalibration();
}

void ModelInterface::on_channelConfig_clicked()
{
    hide();
    if (PageHost *host = PageHost::instance())
        host->showHub();
}

void ModelInterface::mouseDoubleClickEvent(QMouseEvent *event)
{
    // The calibration button is a service function: it appears only after a
    // double-click where it hides.
    if (channelCalibration->isHidden() && m_calibrationRect.contains(event->pos()))
        channelCalibration->show();
    QWidget::mouseDoubleClickEvent(event);
}

void ModelInterface::closeEvent(QCloseEvent *event)
{
    Q_EMIT signal_closeEvent();
    event->accept();
}

// ---------------------------------------------------------------- painting

// What the page itself draws (background, captions, the unit's outline and
// pictures) changes only with its size, its font, the calibration state and
// the buttons' texts; the live report moves only the controls. So the page
// lays out its controls and draws its own part into one opaque pixmap when
// one of these changes, and a paint only copies the damaged rectangles of
// that pixmap. Each control gets the piece of the pixmap beneath it as its
// background: it is opaque to Qt then, and a control that moves repaints
// itself alone instead of the page (and the window) beneath it first.
void ModelInterface::layOut()
{
    const LayoutKey key { size(), devicePixelRatioF(), font(), m_calibrating, channelCalibration->text(),
        channelListen->sizeHint() };
    if (m_laidOut && *m_laidOut == key)
        return;
    m_laidOut.reset(new LayoutKey(key));

    QPixmap &backdrop = m_controls->backdrop;
    backdrop = QPixmap(size() * key.ratio);
    backdrop.setDevicePixelRatio(key.ratio);
    backdrop.fill(ControlColors::lightGrey()); // opaque: no alpha channel
    {
        QPainter painter(&backdrop);
        drawPage(painter);
    }

    // Every control takes the piece of the page beneath it as its backdrop.
    const auto giveBackdrop = [&backdrop, ratio = key.ratio](QWidget *control) {
        const QRect g = control->geometry();
        QPixmap piece = backdrop.copy(QRect(g.topLeft() * ratio, g.size() * ratio));
        piece.setDevicePixelRatio(ratio);
        ControlLayers::setBackdrop(control, piece);
    };
    for (const auto &column : m_controls->bars)
        for (SbusChannel *bar : column)
            giveBackdrop(bar);
    for (QWidget *part : qAsConst(m_controls->parts))
        if (part)
            giveBackdrop(part);
    for (const QVector<CtlButton *> &row : qAsConst(m_controls->lamps))
        for (CtlButton *lamp : row)
            giveBackdrop(lamp);
}

// The page's own drawing; it also places the controls and the buttons.
void ModelInterface::drawPage(QPainter &painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setFont(font());
    const int w = width();
    const int h = height();
    painter.fillRect(rect(), ControlColors::lightGrey());

    const QFontMetrics fm(font());
    const int line = fm.height();

    // Calibration button and, while calibrating, the model's calibration text.
    QFont buttonFont = channelCalibration->font();
    if (buttonFont.bold() != m_calibrating) {
        buttonFont.setBold(m_calibrating);
        channelCalibration->setFont(buttonFont);
        QPalette palette = channelCalibration->palette();
        palette.setColor(QPalette::ButtonText, m_calibrating ? Qt::white : Qt::black);
        channelCalibration->setPalette(palette);
    }
    const int calibrationWidth = qMax(w / 8, fm.horizontalAdvance(channelCalibration->text()) * 3 / 2);
    m_calibrationRect = QRect(5, 10, calibrationWidth, line);
    channelCalibration->setGeometry(m_calibrationRect);
    if (m_calibrating) {
        QFont bold = font();
        bold.setBold(true);
        painter.setFont(bold);
        painter.setPen(Qt::white);
        painter.drawText(QRect(m_calibrationRect.right() + 1 + 5, 10, w * 3 / 4, line),
                         Qt::AlignLeft | Qt::AlignVCenter, m_spec.calibrationText);
        painter.setFont(font());
    }
    // As large as its style needs for its text, so that the text is not cut
    // and leaves the calibration text room in a small window.
    const QSize listenSize = channelListen->sizeHint();
    const int listenWidth = qMax(w / 8, listenSize.width());
    channelListen->setGeometry(w - 5 - listenWidth, 10, listenWidth, qMax(line, listenSize.height()));

    // Two columns of channel bars on the right.
    const int top = 10 + line + kMargin;
    const int columnWidth = qMax(160, w / 5);
    const int firstColumn = w - kMargin - 2 * columnWidth - kColumnGap;
    QFont small = font();
    small.setPointSizeF(qMax(1.0, small.pointSizeF() - 2));
    const QFontMetrics smallFm(small);
    const int labelWidth = smallFm.horizontalAdvance(QStringLiteral("CH16")) + 6;
    const int rowHeight = qMax(1, (h - top - line - kMargin) / kChannels);
    const int barHeight = qMax(6, qMin(rowHeight - 4, 26));
    for (int port = 0; port < 2; ++port) {
        const int x = firstColumn + port * (columnWidth + kColumnGap);
        painter.setPen(Qt::black);
        painter.setFont(font());
        painter.drawText(QRect(x, top, columnWidth, line), Qt::AlignLeft | Qt::AlignVCenter,
                         port == 0 ? QStringLiteral("SBUS 1") : QStringLiteral("SBUS 2"));
        painter.setFont(small);
        for (int ch = 0; ch < kChannels; ++ch) {
            const int y = top + line + ch * rowHeight;
            painter.drawText(QRect(x, y, labelWidth, rowHeight), Qt::AlignLeft | Qt::AlignVCenter,
                             QStringLiteral("CH%1").arg(ch + 1, 2, 10, QLatin1Char('0')));
            m_controls->bars[size_t(port)][size_t(ch)]->setGeometry(
                x + labelWidth, y + (rowHeight - barHeight) / 2, columnWidth - labelWidth, barHeight);
        }
    }
    painter.setFont(font());

    // The unit itself, left of the channel columns.
    const QRect area(kMargin, top, qMax(0, firstColumn - 2 * kMargin), qMax(0, h - top - kMargin));
    drawBody(painter, area);

    painter.setPen(Qt::white);
    for (int i = 0; i < m_spec.parts.size(); ++i) {
        const PartSpec &part = m_spec.parts.at(i);
        const QRect place = placeIn(area, part.place);
        QWidget *widget = m_controls->parts.at(i);
        switch (part.kind) {
        case PartKind::Stick: {
            // Vertical axis label above, horizontal axis label on the right.
            const int labelWidth = fm.horizontalAdvance(part.label2) + 4;
            const int side = qMax(0, qMin(place.width() - labelWidth, place.height() - line));
            const int left = place.left() + qMax(0, (place.width() - side) / 2 - labelWidth / 2);
            const QRect square(left, place.top() + line, side, side);
            widget->setGeometry(square);
            painter.drawText(QRect(square.left(), place.top(), square.width(), line), Qt::AlignCenter, part.label);
            painter.drawText(QRect(square.right() + 4, square.top(), labelWidth, square.height()),
                             Qt::AlignLeft | Qt::AlignVCenter, part.label2);
            break;
        }
        case PartKind::Knob:
        case PartKind::LeftDial:
        case PartKind::RightDial:
        case PartKind::Switch:
        case PartKind::Pad: {
            const QRect control(place.left(), place.top(), place.width(), qMax(0, place.height() - line));
            widget->setGeometry(part.kind == PartKind::Switch ? control : centredSquare(control));
            painter.drawText(QRect(place.left(), control.bottom() + 1, place.width(), line), Qt::AlignCenter,
                             part.label);
            break;
        }
        case PartKind::Lamps: {
            const QVector<CtlButton *> &row = m_controls->lamps.at(i);
            const int n = qMax(1, row.size());
            const int cell = place.width() / n;
            const int lampWidth = qMin(cell, place.height() * 3 / 2);
            for (int b = 0; b < row.size(); ++b)
                row.at(b)->setGeometry(place.left() + b * cell + (cell - lampWidth) / 2, place.top(), lampWidth,
                                       place.height());
            break;
        }
        case PartKind::StopLight:
            // Lit or not with the live report: drawn over the pixmap at each paint.
            m_controls->stopPlaces[i] = centredSquare(place);
            break;
        case PartKind::Picture: {
            const QPixmap &pixmap = m_controls->pictures.at(i);
            if (!pixmap.isNull())
                painter.drawPixmap(centredSquare(place), pixmap);
            break;
        }
        }
    }
}

void ModelInterface::drawBody(QPainter &painter, const QRect &area)
{
    QPainterPath outline;
    if (m_spec.body == BodyShape::GroundStation) {
        outline.addRoundedRect(area.adjusted(1, 1, -1, -1), 18, 18);
    } else {
        outline.addRoundedRect(placeIn(area, { 0.0, 0.0, 1.0, 0.62 }).adjusted(1, 1, -1, 0), 30, 30);
        outline.addEllipse(placeIn(area, { 0.0, 0.42, 0.5, 0.58 }).adjusted(1, 0, 0, -1));
        outline.addEllipse(placeIn(area, { 0.5, 0.42, 0.5, 0.58 }).adjusted(0, 0, -1, -1));
        outline.setFillRule(Qt::WindingFill);
    }
    painter.save();
    painter.setPen(QPen(ControlColors::outlineGrey(), 2));
    painter.setBrush(ControlColors::darkGrey());
    painter.drawPath(outline.simplified());
    painter.restore();
}

void ModelInterface::paintEvent(QPaintEvent *event)
{
    layOut();
    QPainter painter(this);
    const QPixmap &backdrop = m_controls->backdrop;
    const qreal ratio = backdrop.devicePixelRatioF();
    for (const QRect &r : event->region())
        painter.drawPixmap(r, backdrop, QRectF(QPointF(r.topLeft()) * ratio, QSizeF(r.size()) * ratio));

    for (int i = 0; i < m_spec.parts.size(); ++i) {
        if (m_spec.parts.at(i).kind != PartKind::StopLight)
            continue;
        const QRect place = m_controls->stopPlaces.at(i);
        const QPixmap &pixmap = m_controls->stopLit.at(i) ? m_controls->stopLight : m_controls->stopGray;
        if (!pixmap.isNull() && event->region().intersects(place))
            painter.drawPixmap(place, pixmap);
    }
}

ModelInterface *createModelPage(int model, QWidget *parent)
{
    switch (model) {
    case 0:
        return new AlderInterface(parent);
    case 1:
        return new BirchInterface(parent);
    case 2:
        return new CedarInterface(parent);
    case 3:
        return new LarchInterface(parent);
    case 4:
        return new MapleInterface(parent);
    case 5:
        return new RowanInterface(parent);
    case 6:
        return new WillowInterface(parent);
    default:
        return nullptr;
    }
}
