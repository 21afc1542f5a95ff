#include "AppPaths.h"
#include "Dial.h"
#include "MCheckBox.h"
#include "PhaseSwitch.h"
#include "Rocker.h"
#include "RotaryKnob.h"
#include "SbusChannel.h"
#include "Switch.h"

#include <QPainter>
#include <QtMath>
#include <QtTest>

namespace
{
const QRgb AccentBlue = qRgb(66, 170, 249);
const QRgb DarkBlue = qRgb(37, 89, 134);

bool isRgb(const QImage &image, int x, int y, QRgb rgb)
{
    return (image.pixel(x, y) & 0xffffff) == (rgb & 0xffffff);
}

QImage shot(QWidget &w)
{
    return w.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// The parts that do not move are cached for plain painters and painted
// directly under a scaled one; both must put the moving parts in one place.
template <typename Control> QImage drawnScaled(Control &control, int scale)
{
    QImage image(control.size() * scale, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    control.draw(painter);
    painter.end();
    return image;
}

// Mean direction (degrees, counter-clockwise from three o'clock) of the
// accent-blue pixels in a ring around the centre.
double blueDirection(const QImage &image, QPointF centre, double inner, double outer, int *count)
{
    double sx = 0;
    double sy = 0;
    *count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const double dx = x + 0.5 - centre.x();
            const double dy = -(y + 0.5 - centre.y());
            const double d = qSqrt(dx * dx + dy * dy);
            if (d < inner || d > outer || !isRgb(image, x, y, AccentBlue))
                continue;
            sx += dx / d;
            sy += dy / d;
            ++*count;
        }
    }
    double degrees = qRadiansToDegrees(qAtan2(sy, sx));
    return degrees < 0 ? degrees + 360 : degrees;
}

double angleGap(double a, double b)
{
    const double d = qAbs(a - b);
    return qMin(d, 360 - d);
}
} // namespace

// Pixels read back from the controls where their geometry is fixed: a wrong
// formula, sign or rounding shows up as a fill or knob in the wrong place.
class TestControlPainting : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void channelFillExtent_data();
    void channelFillExtent();
    void switchLeverCell_data();
    void switchLeverCell();
    void stickKnobCentre_data();
    void stickKnobCentre();
    void knobPointerDirection_data();
    void knobPointerDirection();
    void dialPointerDirection_data();
    void dialPointerDirection();
    void phaseLitHalf_data();
    void phaseLitHalf();
    void phaseCaptionStaysInItsHalf_data();
    void phaseCaptionStaysInItsHalf();
    void checkedBoxShowsTickPicture();
};

void TestControlPainting::initTestCase()
{
    AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
}

void TestControlPainting::channelFillExtent_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("first"); // first filled pixel along the bar, -1 for none
    QTest::addColumn<int>("last");

    // 262 wide: half = 100, full fill 99 pixels from x = 101.
    QTest::newRow("262 full right") << QSize(262, 20) << false << 150 << 101 << 199;
    QTest::newRow("262 value 1 fills nothing") << QSize(262, 20) << false << 1 << -1 << -1;
    QTest::newRow("262 full left") << QSize(262, 20) << false << -150 << 2 << 100;
    QTest::newRow("263 clamped 200") << QSize(263, 20) << false << 200 << 101 << 199;
    // 200 wide: half = 69, f = 68 * v / 150.
    QTest::newRow("200 value 100") << QSize(200, 24) << false << 100 << 70 << 114;
    QTest::newRow("200 value -149") << QSize(200, 24) << false << -149 << 3 << 69;
    // Vertical, 152 high: half = 75, centre row 76, positive grows upward.
    QTest::newRow("vertical full up") << QSize(20, 152) << true << 150 << 2 << 75;
    QTest::newRow("vertical -60 down") << QSize(20, 152) << true << -60 << 76 << 104;
}

void TestControlPainting::channelFillExtent()
{
    QFETCH(QSize, size);
    QFETCH(bool, vertical);
    QFETCH(int, value);
    QFETCH(int, first);
    QFETCH(int, last);

    SbusChannel bar;
    bar.resize(size);
    bar.setM_index(vertical ? 1 : 0);
    bar.setM_val(value);
    const QImage image = shot(bar);

    int firstBlue = -1;
    int lastBlue = -1;
    const int length = vertical ? size.height() : size.width();
    for (int i = 0; i < length; ++i) {
        const bool blue = vertical ? isRgb(image, size.width() / 2, i, AccentBlue)
                                   : isRgb(image, i, size.height() / 2, AccentBlue);
        if (!blue)
            continue;
        if (firstBlue < 0)
            firstBlue = i;
        lastBlue = i;
    }
    QCOMPARE(firstBlue, first);
    QCOMPARE(lastBlue, last);
}

void TestControlPainting::switchLeverCell_data()
{
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<int>("index");

    for (int i = 0; i < 3; ++i) {
        QTest::addRow("vertical %d", i) << true << i;
        QTest::addRow("horizontal %d", i) << false << i;
    }
}

void TestControlPainting::switchLeverCell()
{
    QFETCH(bool, vertical);
    QFETCH(int, index);

    Switch lever;
    lever.setM_direction(vertical);
    lever.resize(vertical ? QSize(30, 90) : QSize(90, 30));
    lever.setM_index(index);
    const QImage image = shot(lever);

    // Cells of 30 pixels; the lever fills the middle of its own cell only.
    for (int cell = 0; cell < 3; ++cell) {
        const QPoint middle = vertical ? QPoint(15, 30 * cell + 15) : QPoint(30 * cell + 15, 15);
        QCOMPARE(isRgb(image, middle.x(), middle.y(), AccentBlue), cell == index);
    }
    // The lever keeps clear of the slot sides: 6 + 1 pixels on a 30 pixel
    // wide switch.
    const QPoint side = vertical ? QPoint(7, 30 * index + 15) : QPoint(30 * index + 15, 7);
    const QPoint inside = vertical ? QPoint(9, 30 * index + 15) : QPoint(30 * index + 15, 9);
    QVERIFY(!isRgb(image, side.x(), side.y(), AccentBlue));
    QVERIFY(isRgb(image, inside.x(), inside.y(), AccentBlue));
}

void TestControlPainting::stickKnobCentre_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QPointF>("centre");

    // 100 x 100 with radius 10: R = 40 around (50, 50); x * 40 / 30 truncated.
    QTest::newRow("centre") << QSize(100, 100) << QPoint(0, 0) << QPointF(50, 50);
    QTest::newRow("upper right corner") << QSize(100, 100) << QPoint(30, 30) << QPointF(90, 10);
    QTest::newRow("29 truncates to 38") << QSize(100, 100) << QPoint(29, 0) << QPointF(88, 50);
    QTest::newRow("down 7 truncates to 9") << QSize(100, 100) << QPoint(7, -7) << QPointF(59, 59);
    QTest::newRow("clamped (40,-50)") << QSize(100, 100) << QPoint(40, -50) << QPointF(90, 90);
    QTest::newRow("wide widget uses the smaller side") << QSize(160, 100) << QPoint(30, 0) << QPointF(90, 50);
}

void TestControlPainting::stickKnobCentre()
{
    QFETCH(QSize, size);
    QFETCH(QPoint, position);
    QFETCH(QPointF, centre);

    Rocker stick;
    stick.resize(size);
    stick.setM_radius(10);
    stick.setM_position(position);

    for (int scale : { 1, 2 }) {
        const QImage image = scale == 1 ? shot(stick) : drawnScaled(stick, scale);
        double sx = 0;
        double sy = 0;
        int n = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (isRgb(image, x, y, AccentBlue)) {
                    sx += (x + 0.5) / scale;
                    sy += (y + 0.5) / scale;
                    ++n;
                }
            }
        }
        QVERIFY2(n > 100, "knob not drawn in the accent blue");
        QVERIFY2(qAbs(sx / n - centre.x()) < 0.4, qPrintable(QString::number(sx / n)));
        QVERIFY2(qAbs(sy / n - centre.y()) < 0.4, qPrintable(QString::number(sy / n)));
    }
}

void TestControlPainting::knobPointerDirection_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<double>("degrees");

    // The tip starts lower left and turns counter-clockwise through the bottom.
    QTest::newRow("0 points lower left") << 0 << 225.0;
    QTest::newRow("50 points right") << 50 << 0.0;
    QTest::newRow("100 points upper left") << 100 << 135.0;
    QTest::newRow("150 clamps to 100") << 150 << 135.0;
}

void TestControlPainting::knobPointerDirection()
{
    QFETCH(int, position);
    QFETCH(double, degrees);

    RotaryKnob knob;
    knob.resize(80, 80);
    knob.setM_position(position);
    int count = 0;
    for (int scale : { 1, 2 }) {
        const QImage image = scale == 1 ? shot(knob) : drawnScaled(knob, scale);
        const double seen = blueDirection(image, QPointF(40, 40) * scale, 9 * scale, 24 * scale, &count);
        QVERIFY(count > 5);
        QVERIFY2(angleGap(seen, degrees) < 4, qPrintable(QString::number(seen)));
    }
}

void TestControlPainting::dialPointerDirection_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("position");
    QTest::addColumn<double>("degrees");

    QTest::newRow("left dial at 0 points up") << 0 << 0 << 90.0;
    QTest::newRow("left dial -90 points left") << 0 << -90 << 180.0;
    QTest::newRow("right dial 45") << 1 << 45 << 45.0;
    QTest::newRow("right dial 90 points right") << 1 << 90 << 0.0;
}

void TestControlPainting::dialPointerDirection()
{
    QFETCH(int, direction);
    QFETCH(int, position);
    QFETCH(double, degrees);

    Dial dial;
    dial.resize(100, 100);
    dial.setM_direction(direction);
    dial.setM_position(position);
    int count = 0;
    const double seen = blueDirection(shot(dial), QPointF(50, 50), 12, 40, &count);
    QVERIFY(count > 20);
    QVERIFY2(angleGap(seen, degrees) < 3, qPrintable(QString::number(seen)));
}

void TestControlPainting::phaseLitHalf_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("leftLit");

    QTest::newRow("0 lights left") << 0 << true;
    QTest::newRow("1 lights right") << 1 << false;
    QTest::newRow("-5 lights right") << -5 << false;
}

void TestControlPainting::phaseLitHalf()
{
    QFETCH(int, index);
    QFETCH(bool, leftLit);

    PhaseSwitch phase;
    phase.resize(120, 30);
    phase.setM_index(index);
    const QImage image = shot(phase);
    // Halves (4, 4, 56, 22) and (60, 4, 56, 22); sample away from the captions.
    QCOMPARE(isRgb(image, 8, 8, AccentBlue), leftLit);
    QCOMPARE(isRgb(image, 64, 8, DarkBlue), !leftLit);
    QVERIFY(!isRgb(image, 8, 8, DarkBlue));
    QVERIFY(!isRgb(image, 112, 8, AccentBlue));
}

void TestControlPainting::phaseCaptionStaysInItsHalf_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("Normal, left") << 0;
    QTest::newRow("Reverse, right") << 1;
}

// A caption wider than its half (an English one in a large font) is drawn
// whole inside the lit half, not across the other half and the frame.
void TestControlPainting::phaseCaptionStaysInItsHalf()
{
    QFETCH(int, index);
    PhaseSwitch phase;
    QFont font = phase.font();
    font.setPixelSize(20);
    phase.setFont(font);
    phase.setM_positive(QStringLiteral("Normal"));
    phase.setM_negative(QStringLiteral("Reverse"));
    phase.setM_index(index);
    phase.resize(140, 32);
    const QImage image = shot(phase);
    // Halves (4, 4, 66, 24) and (70, 4, 66, 24); the caption is pure white.
    const QRect lit = index == 0 ? QRect(5, 5, 64, 22) : QRect(71, 5, 64, 22);
    int inside = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!isRgb(image, x, y, qRgb(255, 255, 255)))
                continue;
            QVERIFY2(lit.contains(x, y), qPrintable(QStringLiteral("white at %1,%2").arg(x).arg(y)));
            ++inside;
        }
    }
    QVERIFY(inside > 20);
}

// The tick is the picture delivered beside the program, drawn only for an
// enabled, checked box.
void TestControlPainting::checkedBoxShowsTickPicture()
{
    QVERIFY(!QImage(AppPaths::file(QStringLiteral("/image/yes.png"))).isNull());
    QVERIFY(!QImage(AppPaths::file(QStringLiteral("/image/return.png"))).isNull());

    MCheckBox box;
    box.resize(150, 30);
    auto tickPixels = [&box]() {
        const QImage image = shot(box);
        int n = 0;
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 30; ++x) {
                const QColor c = image.pixelColor(x, y);
                n += c.blue() > 200 && c.red() < 140;
            }
        }
        return n;
    };
    box.setM_checkEnable(true);
    box.setM_checked(true);
    QVERIFY(tickPixels() > 20);
    box.setM_checked(false);
    QCOMPARE(tickPixels(), 0);
    box.setM_checked(true);
    box.setM_checkEnable(false);
    QCOMPARE(tickPixels(), 0);
}

QTEST_MAIN(TestControlPainting)
#include "tst_controlpainting.moc"
