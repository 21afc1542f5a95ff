// How long one full repaint of a model page's instruments takes: 32 channel
// bars, 4 sticks, 4 switches, 2 knobs and 8 key lamps on a 1280 x 800 page,
// with the values moving between frames as the live report moves them.

#include "CtlButton.h"
#include "Rocker.h"
#include "RotaryKnob.h"
#include "SbusChannel.h"
#include "SteeringWheel.h"
#include "Switch.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <vector>

namespace
{

struct Page {
    QWidget widget;
    std::vector<SbusChannel *> bars;
    std::vector<Rocker *> sticks;
    std::vector<Switch *> switches;
    std::vector<RotaryKnob *> knobs;
    std::vector<CtlButton *> lamps;

    Page()
    {
        widget.resize(1280, 800);
        widget.setAttribute(Qt::WA_StyledBackground, false);
        for (int column = 0; column < 2; ++column) {
            for (int row = 0; row < 16; ++row) {
                auto *bar = new SbusChannel(&widget);
                bar->setGeometry(700 + column * 290, 60 + row * 44, 262, 22);
                bars.push_back(bar);
            }
        }
        for (int i = 0; i < 4; ++i) {
            auto *stick = new Rocker(&widget);
            stick->setM_radius(10);
            stick->setGeometry(40 + (i % 2) * 260, 120 + (i / 2) * 280, 200, 200);
            sticks.push_back(stick);
        }
        for (int i = 0; i < 4; ++i) {
            auto *sw = new Switch(&widget);
            sw->setM_direction(i < 2);
            sw->setGeometry(40 + i * 70, 40, i < 2 ? 24 : 66, i < 2 ? 66 : 24);
            switches.push_back(sw);
        }
        for (int i = 0; i < 2; ++i) {
            auto *knob = new RotaryKnob(&widget);
            knob->setGeometry(330 + i * 90, 40, 60, 60);
            knobs.push_back(knob);
        }
        for (int i = 0; i < 8; ++i) {
            auto *lamp = new CtlButton(&widget);
            lamp->setText(QStringLiteral("F%1").arg(i + 1));
            lamp->setGeometry(40 + i * 60, 700, 50, 34);
            lamps.push_back(lamp);
        }
    }

    // Values as a moving stick and a sweeping channel report would give.
    void feed(int frame)
    {
        for (size_t i = 0; i < bars.size(); ++i)
            bars[i]->setM_val(int((frame * 7 + i * 19) % 301) - 150);
        for (size_t i = 0; i < sticks.size(); ++i)
            sticks[i]->setM_position(
                QPoint(int((frame + i * 11) % 61) - 30, int((frame * 3 + i * 5) % 61) - 30));
        for (size_t i = 0; i < switches.size(); ++i)
            switches[i]->setM_index(int((frame / 8 + i) % 3));
        for (size_t i = 0; i < knobs.size(); ++i)
            knobs[i]->setM_position(int((frame * 2 + i * 40) % 101));
        for (size_t i = 0; i < lamps.size(); ++i)
            lamps[i]->setM_state(((frame >> i) & 1) ? 1 : 0);
    }
};

Page &page()
{
    static Page p;
    return p;
}

// Through the widget paint path, as the page repaints on screen.
void BM_PageRepaint(benchmark::State &state)
{
    Page &p = page();
    QImage image(1280, 800, QImage::Format_ARGB32_Premultiplied);
    int frame = 0;
    for (auto _ : state) {
        p.feed(frame++);
        image.fill(QColor(180, 180, 180));
        p.widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_PageRepaint)->Unit(benchmark::kMicrosecond);

// The drawing functions alone, one painter for the whole page.
void BM_DrawFunctions(benchmark::State &state)
{
    Page &p = page();
    QImage image(1280, 800, QImage::Format_ARGB32_Premultiplied);
    int frame = 0;
    auto drawAt = [](QPainter &painter, auto *control) {
        painter.save();
        painter.translate(control->pos());
        control->draw(painter);
        painter.restore();
    };
    for (auto _ : state) {
        p.feed(frame++);
        image.fill(QColor(180, 180, 180));
        QPainter painter(&image);
        for (auto *c : p.bars)
            drawAt(painter, c);
        for (auto *c : p.sticks)
            drawAt(painter, c);
        for (auto *c : p.switches)
            drawAt(painter, c);
        for (auto *c : p.knobs)
            drawAt(painter, c);
        for (auto *c : p.lamps)
            drawAt(painter, c);
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_DrawFunctions)->Unit(benchmark::kMicrosecond);

// Each kind of instrument alone, to see where a page's time goes.
template <typename T> void drawAll(benchmark::State &state, std::vector<T *> Page::*group)
{
    Page &p = page();
    QImage image(1280, 800, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(180, 180, 180));
    int frame = 0;
    for (auto _ : state) {
        p.feed(frame++);
        QPainter painter(&image);
        for (T *c : p.*group) {
            painter.save();
            painter.translate(c->pos());
            c->draw(painter);
            painter.restore();
        }
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
}
void BM_Bars(benchmark::State &s)
{
    drawAll(s, &Page::bars);
}
void BM_Sticks(benchmark::State &s)
{
    drawAll(s, &Page::sticks);
}
void BM_Switches(benchmark::State &s)
{
    drawAll(s, &Page::switches);
}
void BM_Knobs(benchmark::State &s)
{
    drawAll(s, &Page::knobs);
}
void BM_Lamps(benchmark::State &s)
{
    drawAll(s, &Page::lamps);
}
BENCHMARK(BM_Bars)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Sticks)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Switches)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Knobs)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Lamps)->Unit(benchmark::kMicrosecond);

// A Larch's pad (176 x 176 on a 1280 x 800 page) keeps only the look it
// shows: a paint with its lamps unchanged copies that look (Arg 0), a paint
// after a lamp changed draws the new one first (Arg 1).
void BM_PadPaint(benchmark::State &state)
{
    const bool changing = state.range(0) != 0;
    SteeringWheel pad(nullptr, 1);
    pad.resize(176, 176);
    QImage image(pad.size(), QImage::Format_ARGB32_Premultiplied);
    int frame = 0;
    for (auto _ : state) {
        if (changing) {
            ++frame;
            pad.m_up = frame & 1;
            pad.m_left = frame & 2;
            pad.m_down = frame & 4;
            pad.m_right = frame & 8;
            pad.m_centre = frame & 16;
        }
        image.fill(QColor(180, 180, 180));
        pad.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_PadPaint)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void BM_PageFill(benchmark::State &state)
{
    QImage image(1280, 800, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(QColor(180, 180, 180));
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_PageFill)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
