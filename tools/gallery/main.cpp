// quillmark-gallery OUTDIR
//
// Renders every drawn control in a range of states and sizes into PNG sheets
// (one per control), on the light grey of the model pages, each cell labelled.

#include "AppPaths.h"
#include "CtlButton.h"
#include "Dial.h"
#include "MCalculator.h"
#include "MCheckBox.h"
#include "MSpinBox.h"
#include "PhaseSwitch.h"
#include "Rocker.h"
#include "RotaryKnob.h"
#include "SbusChannel.h"
#include "SteeringWheel.h"
#include "Switch.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QTextStream>

#include <functional>
#include <memory>
#include <vector>

namespace
{

const QColor PageGrey(180, 180, 180);
constexpr int Pad = 12;
constexpr int LabelHeight = 18;

struct Cell {
    QString label;
    std::unique_ptr<QWidget> widget;
    QSize size;
};

class Sheet
{
public:
    explicit Sheet(QString name, int columns = 4, int zoom = 1)
        : m_name(std::move(name))
        , m_columns(columns)
        , m_zoom(zoom)
    {
    }

    template <typename W> W *add(const QString &label, QSize size, std::function<void(W *)> setup = {})
    {
        auto *w = new W(nullptr);
        w->resize(size);
        if (setup)
            setup(w);
        m_cells.push_back({ label, std::unique_ptr<QWidget>(w), size });
        return w;
    }

    void addWidget(const QString &label, QWidget *w)
    {
        m_cells.push_back({ label, std::unique_ptr<QWidget>(w), w->size() });
    }

    bool save(const QString &dir) const
    {
        QVector<int> colWidth(m_columns, 0);
        QVector<int> rowHeight((int(m_cells.size()) + m_columns - 1) / m_columns, 0);
        for (int i = 0; i < int(m_cells.size()); ++i) {
            const QSize s = m_cells[i].size * m_zoom;
            colWidth[i % m_columns] = qMax(colWidth[i % m_columns], qMax(s.width(), 120));
            rowHeight[i / m_columns] = qMax(rowHeight[i / m_columns], s.height() + LabelHeight);
        }
        int width = Pad;
        for (int w : colWidth)
            width += w + Pad;
        int height = Pad;
        for (int h : rowHeight)
            height += h + Pad;

        QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
        image.fill(PageGrey);
        QPainter painter(&image);
        int y = Pad;
        for (int row = 0; row < rowHeight.size(); ++row) {
            int x = Pad;
            for (int col = 0; col < m_columns; ++col) {
                const int i = row * m_columns + col;
                if (i >= int(m_cells.size()))
                    break;
                const Cell &cell = m_cells[i];
                painter.setPen(Qt::black);
                painter.drawText(
                    QRect(x, y, colWidth[col], LabelHeight), Qt::AlignLeft | Qt::AlignVCenter, cell.label);
                // A thin frame shows the widget's own rectangle.
                painter.setPen(QColor(150, 150, 150));
                painter.drawRect(
                    QRect(QPoint(x, y + LabelHeight), cell.size * m_zoom).adjusted(-1, -1, 0, 0));
                painter.save();
                painter.translate(x, y + LabelHeight);
                painter.scale(m_zoom, m_zoom);
                cell.widget->render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
                painter.restore();
                x += colWidth[col] + Pad;
            }
            y += rowHeight[row] + Pad;
        }
        painter.end();
        return image.save(QDir(dir).filePath(m_name + QStringLiteral(".png")));
    }

private:
    QString m_name;
    int m_columns;
    int m_zoom;
    std::vector<Cell> m_cells;
};

void sbusSheet(Sheet &s)
{
    for (int v : { -150, -75, -1, 0, 1, 37, 150 })
        s.add<SbusChannel>(
            QStringLiteral("val %1 w262").arg(v), QSize(262, 20), [v](SbusChannel *c) { c->setM_val(v); });
    s.add<SbusChannel>(
        QStringLiteral("200 -> 150, w200"), QSize(200, 24), [](SbusChannel *c) { c->setM_val(200); });
    s.add<SbusChannel>(QStringLiteral("hold -100, val 60"), QSize(262, 26), [](SbusChannel *c) {
        c->setM_val(60);
        c->setM_hold(-100);
        c->setM_throttleEnable(true);
    });
    s.add<SbusChannel>(QStringLiteral("hold 150, val -150"), QSize(262, 26), [](SbusChannel *c) {
        c->setM_val(-150);
        c->setM_hold(150);
        c->setM_throttleEnable(true);
    });
    s.add<SbusChannel>(QStringLiteral("vertical 120"), QSize(24, 152), [](SbusChannel *c) {
        c->setM_index(1);
        c->setM_val(120);
    });
    s.add<SbusChannel>(QStringLiteral("vertical -150 hold"), QSize(24, 152), [](SbusChannel *c) {
        c->setM_index(1);
        c->setM_val(-150);
        c->setM_hold(0);
        c->setM_throttleEnable(true);
    });
    s.add<SbusChannel>(
        QStringLiteral("vertical 0"), QSize(30, 100), [](SbusChannel *c) { c->setM_index(1); });
}

void switchSheet(Sheet &s)
{
    for (int i = 0; i < 3; ++i)
        s.add<Switch>(
            QStringLiteral("vertical %1").arg(i), QSize(24, 66), [i](Switch *w) { w->setM_index(i); });
    s.add<Switch>(QStringLiteral("vertical big 2"), QSize(40, 120), [](Switch *w) { w->setM_index(2); });
    for (int i = 0; i < 3; ++i)
        s.add<Switch>(QStringLiteral("horizontal %1").arg(i), QSize(66, 24), [i](Switch *w) {
            w->setM_direction(false);
            w->setM_index(i);
        });
    s.add<Switch>(QStringLiteral("disabled-looking pen"), QSize(24, 66), [](Switch *w) {
        w->setPenColor(QColor(150, 150, 150));
        w->setM_index(0);
        w->setEnabled(false);
    });
}

void rockerSheet(Sheet &s)
{
    const QPoint positions[] = { { 0, 0 }, { 30, 30 }, { -30, -30 }, { 15, -20 }, { -30, 30 } };
    for (const QPoint &p : positions)
        s.add<Rocker>(QStringLiteral("(%1,%2)").arg(p.x()).arg(p.y()), QSize(120, 120), [p](Rocker *r) {
            r->setM_radius(10);
            r->setM_position(p);
        });
    s.add<Rocker>(QStringLiteral("(40,-50) r8 small"), QSize(80, 80),
        [](Rocker *r) { r->setM_position(QPoint(40, -50)); });
    for (double twist : { -1.0, 0.0, 0.5, 1.0 })
        s.add<Rocker>(QStringLiteral("twist %1").arg(twist), QSize(140, 140), [twist](Rocker *r) {
            r->setM_radius(10);
            r->setM_is_z_axis(true);
            r->setM_z_axis_per(twist);
            r->setM_position(QPoint(10, 5));
        });
    s.add<Rocker>(QStringLiteral("wide 180x120"), QSize(180, 120), [](Rocker *r) {
        r->setM_radius(10);
        r->setM_position(QPoint(-12, 24));
    });
}

void dialKnobSheet(Sheet &s)
{
    for (int p : { 0, -45, -90 })
        s.add<Dial>(
            QStringLiteral("left dial %1").arg(p), QSize(80, 80), [p](Dial *d) { d->setM_position(p); });
    for (int p : { 0, 45, 90 })
        s.add<Dial>(QStringLiteral("right dial %1").arg(p), QSize(80, 80), [p](Dial *d) {
            d->setM_direction(1);
            d->setM_position(p);
        });
    for (int p : { 0, 25, 50, 100 })
        s.add<RotaryKnob>(
            QStringLiteral("knob %1").arg(p), QSize(60, 60), [p](RotaryKnob *k) { k->setM_position(p); });
    s.add<RotaryKnob>(
        QStringLiteral("knob 150 -> 100, 90px"), QSize(90, 90), [](RotaryKnob *k) { k->setM_position(150); });
    s.add<Dial>(QStringLiteral("dial 120x80 -30"), QSize(120, 80), [](Dial *d) { d->setM_position(-30); });
}

void keysSheet(Sheet &s)
{
    for (int state : { 0, 1, 2, 5 })
        s.add<CtlButton>(QStringLiteral("lamp state %1").arg(state), QSize(50, 34), [state](CtlButton *b) {
            b->setM_state(state);
            b->setText(QStringLiteral("F%1").arg(state + 1));
        });
    s.add<CtlButton>(QStringLiteral("lamp wide"), QSize(90, 40),
        [](CtlButton *b) { b->setText(QStringLiteral("T1(T5)")); });

    auto pad = [&s](const QString &label, int state, std::function<void(SteeringWheel *)> setup) {
        auto *w = new SteeringWheel(nullptr, state);
        w->resize(110, 110);
        setup(w);
        s.addWidget(label, w);
    };
    pad(QStringLiteral("pad idle, no centre"), 0, [](SteeringWheel *) {});
    pad(QStringLiteral("pad up+right"), 1, [](SteeringWheel *w) {
        w->m_up = true;
        w->m_right = true;
    });
    pad(QStringLiteral("pad left+centre"), 1, [](SteeringWheel *w) {
        w->m_left = true;
        w->m_centre = true;
    });
    pad(QStringLiteral("pad down"), 1, [](SteeringWheel *w) { w->m_down = true; });
}

void toggleSheet(Sheet &s)
{
    s.add<PhaseSwitch>(QStringLiteral("phase 0"), QSize(90, 28));
    s.add<PhaseSwitch>(QStringLiteral("phase 1"), QSize(90, 28), [](PhaseSwitch *p) { p->setM_index(1); });
    s.add<PhaseSwitch>(QStringLiteral("phase -5"), QSize(90, 28), [](PhaseSwitch *p) { p->setM_index(-5); });
    s.add<PhaseSwitch>(QStringLiteral("phase EN"), QSize(140, 32), [](PhaseSwitch *p) {
        p->setM_positive(QStringLiteral("Normal"));
        p->setM_negative(QStringLiteral("Reverse"));
        p->setM_index(1);
    });
    struct Box {
        const char *label;
        bool enable, checked, radio;
    };
    const Box boxes[]
        = { { "enabled unchecked", true, false, false }, { "enabled checked", true, true, false },
              { "disabled unchecked", false, false, false }, { "disabled checked", false, true, false },
              { "radio checked", true, true, true }, { "radio unchecked", true, false, true } };
    for (const Box &b : boxes)
        s.add<MCheckBox>(QString::fromLatin1(b.label), QSize(150, 24), [b](MCheckBox *c) {
            c->setM_checkEnable(b.enable);
            c->setM_checked(b.checked);
            c->setM_radio(b.radio);
            c->setM_text(QStringLiteral("通道 %1").arg(QString::fromLatin1(b.label)));
        });
    s.add<MCheckBox>(QStringLiteral("big 40"), QSize(160, 40), [](MCheckBox *c) {
        c->setM_checkEnable(true);
        c->setM_checked(true);
        c->setM_text(QStringLiteral("SBUS 1"));
    });
}

void spinSheet(Sheet &s)
{
    s.add<MSpinBox>(
        QStringLiteral("0 decimals, 75"), QSize(150, 30), [](MSpinBox *b) { b->setM_currentValue(75); });
    s.add<MSpinBox>(
        QStringLiteral("at max 150"), QSize(150, 30), [](MSpinBox *b) { b->setM_currentValue(999); });
    s.add<MSpinBox>(QStringLiteral("-100..100, 2 dec, -12.5"), QSize(170, 30), [](MSpinBox *b) {
        b->setM_minValue(-100);
        b->setM_maxValue(100);
        b->setM_decimal(2);
        b->setM_currentValue(-12.5);
    });
    s.add<MSpinBox>(QStringLiteral("enable box checked"), QSize(200, 30), [](MSpinBox *b) {
        b->setM_checkEnable(true);
        b->setM_checked(true);
        b->setM_decimal(1);
        b->setM_currentValue(12.3);
    });
    s.add<MSpinBox>(QStringLiteral("enable box unchecked"), QSize(200, 30), [](MSpinBox *b) {
        b->setM_checkEnable(true);
        b->setM_currentValue(40);
    });
    s.add<MSpinBox>(QStringLiteral("buttons off"), QSize(150, 30), [](MSpinBox *b) {
        b->setM_buttonState(false);
        b->setM_currentValue(5);
    });
    auto *held = s.add<MSpinBox>(
        QStringLiteral("plus held"), QSize(150, 30), [](MSpinBox *b) { b->setM_currentValue(8); });
    const QPoint plus(150 - 10, 15);
    QMouseEvent press(QEvent::MouseButtonPress, plus, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(held, &press);
    s.add<MSpinBox>(
        QStringLiteral("tall 220x44"), QSize(220, 44), [](MSpinBox *b) { b->setM_currentValue(150); });
}

// The keypad as a spin box opens it, once idle and once with keys typed and
// one held down.
void keypadSheet(Sheet &s, QWidget *host)
{
    struct Pad {
        const char *label;
        double min;
        int decimal;
        QString typed;
        int held;
        bool inside;
    };
    const Pad pads[] = { { "0..150, 0 dec: '-' '.' dimmed", 0, 0, QString(), -1, false },
        { "-100..100, 2 dec, -12.5, '7' held", -100, 2, QStringLiteral("-12.5"), 7, true },
        { "'5' pressed, pointer left it", -100, 1, QStringLiteral("0.5"), 5, false } };
    for (const Pad &p : pads) {
        auto *spin = new MSpinBox(host);
        spin->setGeometry(10, 10, 160, 30);
        spin->setM_minValue(p.min);
        spin->setM_maxValue(100);
        spin->setM_decimal(p.decimal);
        spin->show();
        const QPoint value(80, 15);
        QMouseEvent press(QEvent::MouseButtonPress, value, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(spin, &press);
        auto *keypad = spin->findChild<MCalculator *>();
        if (!keypad)
            continue;
        keypad->findChild<QLineEdit *>()->setText(p.typed);
        if (p.held >= 0) {
            const QPoint at = keypad->keyRect(p.held).center();
            QMouseEvent keyPress(
                QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(keypad, &keyPress);
            if (!p.inside) {
                QMouseEvent away(
                    QEvent::MouseMove, QPoint(2, 2), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(keypad, &away);
            }
        }
        QImage shot = keypad->grab().toImage();
        auto *label = new QLabel;
        label->setPixmap(QPixmap::fromImage(shot));
        label->resize(shot.size());
        s.addWidget(QString::fromLatin1(p.label), label);
    }
}

// A few controls three times enlarged, to judge the details.
void zoomSheet(Sheet &s)
{
    s.add<RotaryKnob>(QStringLiteral("knob 0"), QSize(60, 60));
    s.add<Dial>(QStringLiteral("left dial -30"), QSize(60, 60), [](Dial *d) { d->setM_position(-30); });
    s.add<CtlButton>(
        QStringLiteral("lamp F1"), QSize(50, 34), [](CtlButton *b) { b->setText(QStringLiteral("F1")); });
    s.add<MCheckBox>(QStringLiteral("checked"), QSize(90, 24), [](MCheckBox *c) {
        c->setM_checkEnable(true);
        c->setM_checked(true);
        c->setM_text(QStringLiteral("SBUS"));
    });
    s.add<PhaseSwitch>(QStringLiteral("phase 0"), QSize(80, 26));
    s.add<MSpinBox>(QStringLiteral("boxed spin"), QSize(160, 28), [](MSpinBox *b) {
        b->setM_checkEnable(true);
        b->setM_checked(true);
        b->setM_currentValue(99);
    });
    s.add<SbusChannel>(QStringLiteral("bar 60 hold"), QSize(120, 20), [](SbusChannel *c) {
        c->setM_val(60);
        c->setM_throttleEnable(true);
        c->setM_hold(-50);
    });
    s.add<Rocker>(QStringLiteral("twist 0.6"), QSize(90, 90), [](Rocker *r) {
        r->setM_is_z_axis(true);
        r->setM_z_axis_per(0.6);
    });
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (qEnvironmentVariableIsEmpty("QUILLMARK_APP_DIR"))
        AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));

    QTextStream err(stderr);
    const QStringList args = app.arguments();
    if (args.size() != 2) {
        err << "usage: quillmark-gallery OUTDIR\n";
        return 1;
    }
    const QString outDir = args.at(1);
    if (!QDir().mkpath(outDir)) {
        err << "quillmark-gallery: cannot create " << outDir << "\n";
        return 2;
    }

    QWidget host;
    host.resize(400, 300);
    host.show();

    struct Entry {
        const char *name;
        int columns;
        std::function<void(Sheet &)> fill;
    };
    const Entry entries[] = {
        { "sbuschannel", 3, sbusSheet },
        { "switch", 4, switchSheet },
        { "rocker", 5, rockerSheet },
        { "dial-knob", 4, dialKnobSheet },
        { "lamps-pad", 5, keysSheet },
        { "phase-checkbox", 4, toggleSheet },
        { "spinbox", 4, spinSheet },
        { "keypad", 3, [&host](Sheet &s) { keypadSheet(s, &host); } },
        { "zoom", 3, zoomSheet },
    };
    int failures = 0;
    for (const Entry &e : entries) {
        Sheet sheet(QString::fromLatin1(e.name), e.columns, qstrcmp(e.name, "zoom") == 0 ? 3 : 1);
        e.fill(sheet);
        if (!sheet.save(outDir)) {
            err << "quillmark-gallery: cannot write " << e.name << ".png\n";
            ++failures;
        }
    }
    return failures == 0 ? 0 : 3;
}
