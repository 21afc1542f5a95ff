#pragma once

#include <QDialog>

class QLineEdit;
class QTextEdit;

// "CAN Receive Frame": lists the CAN frames the unit reports back (answer
// 0x26), one line per frame, with a receive counter.
class canReceive : public QDialog
{
    Q_OBJECT
public:
    explicit canReceive(QWidget *parent = nullptr);

    // One reported frame: standard id (2 bytes LE), extended id (4 bytes LE),
    // IDE, RTR, data length, data bytes (at most 8 shown). Payloads shorter
    // than the 9 bytes before the data are ignored.
    void addFrame(const QByteArray &payload);
    int receivedCount() const { return m_count; }

    // The line shown for a frame payload, empty when it is too short.
    static QString frameLine(const QByteArray &payload);

private:
    QLineEdit *lineEdit_count;
    QTextEdit *textEdit;
    int m_count = 0;
};
