#pragma once

#include <QString>
#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;

// On the connecting screen when the unit's port did not open: why, the
// serial ports present (or a path typed in), and a Connect button.
class PortChooser : public QWidget
{
    Q_OBJECT
public:
    struct Entry {
        QString path;
        QString description;
        bool hasIds = false;
        quint16 vendorId = 0;
        quint16 productId = 0;
    };
    // "/dev/ttyUSB0 — CP2102 USB to UART (10c4:ea60)"
    static QString entryText(const Entry &entry);

    explicit PortChooser(QWidget *parent = nullptr);

    void setProblem(const QString &text);
    QString problem() const;
    // Lists the serial ports present again; what was typed stays.
    void refresh();
    // The path to connect to: the chosen port's, or the text typed in.
    QString chosenPath() const;

Q_SIGNALS:
    void connectRequested(const QString &path);

private:
    QLabel *m_problem;
    QComboBox *m_ports;
    QPushButton *m_refresh;
    QPushButton *m_connect;
};
