#include "EditMarks.h"

#include <QPainter>
#include <QVariant>
#include <QWidget>

namespace
{
const char kProperty[] = "unwritten";
const char kMarkName[] = "unwrittenMark";
constexpr int kMarkSize = 10;

// Amber reads on the dark panels and on the grey controls alike, and is no
// colour the controls use for their own states.
class CornerMark : public QWidget
{
public:
    explicit CornerMark(QWidget *parent)
        : QWidget(parent)
    {
        setObjectName(QLatin1String(kMarkName));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setGeometry(0, 0, kMarkSize, kMarkSize);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(40, 40, 40), 1));
        painter.setBrush(QColor(255, 176, 32));
        const QPointF corner[] = { { 0.5, 0.5 }, { kMarkSize - 0.5, 0.5 }, { 0.5, kMarkSize - 0.5 } };
        painter.drawPolygon(corner, 3);
    }
};
} // namespace

namespace EditMarks
{

void setMarked(QWidget *control, bool marked)
{
    if (!control || isMarked(control) == marked)
        return;
    control->setProperty(kProperty, marked);
    auto *mark = control->findChild<CornerMark *>(QLatin1String(kMarkName), Qt::FindDirectChildrenOnly);
    if (!mark && marked)
        mark = new CornerMark(control);
    if (mark) {
        mark->setVisible(marked);
        mark->raise();
    }
}

bool isMarked(const QWidget *control)
{
    return control && control->property(kProperty).toBool();
}

} // namespace EditMarks
