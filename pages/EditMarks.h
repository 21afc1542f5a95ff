#pragma once

class QWidget;

// The mark of a control whose value has not been written to the unit: a
// small amber corner at its top left, drawn over whatever the control paints
// (a style sheet border would not show on the drawn controls), and the
// dynamic property "unwritten".
namespace EditMarks
{

void setMarked(QWidget *control, bool marked);
bool isMarked(const QWidget *control);

} // namespace EditMarks
