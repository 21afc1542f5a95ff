// The virtual unit binary over a real pseudo-terminal, opened with the same
// QSerialPort settings as the configurator and cut with its frame cutter.
#include "AnswerRules.h"
#include "FrameCutter.h"
#include "SerialFrame.h"
#include "VunitProcess.h"

#include <QFileInfo>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

struct Heard {
    quint8 code;
    QByteArray payload;
};

// The configurator's end of the line: a serial port at 115200 8N1 and the
// frames cut from it.
class Line : public QObject
{
public:
    explicit Line(const QString &path)
    {
        m_port.setPortName(path);
        m_port.setBaudRate(QSerialPort::Baud115200);
        m_port.setDataBits(QSerialPort::Data8);
        m_port.setParity(QSerialPort::NoParity);
        m_port.setStopBits(QSerialPort::OneStop);
        m_port.setFlowControl(QSerialPort::NoFlowControl);
        connect(&m_port, &QSerialPort::readyRead, this, [this]() {
            m_cutter.feed(m_port.readAll(), [this](quint8 c, const QByteArray &p) {
                heard.append({ c, p });
            });
        });
    }

    bool open() { return m_port.open(QIODevice::ReadWrite); }
    void close() { m_port.close(); }
    void send(const QByteArray &frame)
    {
        m_port.write(frame);
        m_port.flush();
    }
    int count(quint8 code) const
    {
        int n = 0;
        for (const Heard &h : heard)
            n += h.code == code ? 1 : 0;
        return n;
    }
    QByteArray last(quint8 code) const
    {
        for (int i = heard.size() - 1; i >= 0; --i)
            if (heard.at(i).code == code)
                return heard.at(i).payload;
        return QByteArray();
    }

    QVector<Heard> heard;

private:
    QSerialPort m_port;
    FrameCutter m_cutter;
};

} // namespace

class TestVunitPty : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void answersAndStreamsOverASerialPort();
    void keepsParametersAcrossReconnects();
    void refusesWhatItIsTold();
    void terminateRemovesTheLink();
};

void TestVunitPty::answersAndStreamsOverASerialPort()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.start({ "--model", "CEDAR", "--module", "2" }));
    QCOMPARE(QFileInfo(unit.linkPath()).symLinkTarget(), unit.ptyPath());

    Line line(unit.linkPath());
    QVERIFY(line.open());
    line.send(SerialFrame::encode(0xDF));
    line.send(SerialFrame::encode(0xFF));
    QTRY_COMPARE_WITH_TIMEOUT(line.heard.size(), 2, 5000);
    QCOMPARE(interpretAnswer(0xDF, line.last(0xDF)).moduleKind, 2);
    QCOMPARE(interpretAnswer(0xFF, line.last(0xFF)).identifier, QStringLiteral("CEDAR"));

    line.send(SerialFrame::startUpload(2));
    QTRY_VERIFY_WITH_TIMEOUT(line.count(0xA5) >= 25, 10000);
    for (const Heard &h : line.heard)
        if (h.code == 0xA5)
            QCOMPARE(h.payload.size(), 1 + 30 + 64);

    line.send(SerialFrame::encode(0xE4));
    QTRY_COMPARE_WITH_TIMEOUT(line.count(0xE4), 1, 5000);
    const int reports = line.count(0xA5);
    // Nothing may follow the stop; absence needs a moment to show.
    QTest::qWait(200);
    QCOMPARE(line.count(0xA5), reports);

    const QVector<VunitProcess::RecordLine> record = unit.record();
    QCOMPARE(record.size(), 4);
    QCOMPARE(record.at(0).code, quint8(0xDF));
    QCOMPARE(record.at(1).code, quint8(0xFF));
    QCOMPARE(record.at(2).code, quint8(0xE5));
    QCOMPARE(record.at(2).payload.toHex(), QByteArray("0232"));
    QCOMPARE(record.at(3).code, quint8(0xE4));
    QVERIFY(record.at(3).payload.isEmpty());
    QVERIFY(record.at(0).ms <= record.at(3).ms);
}

void TestVunitPty::keepsParametersAcrossReconnects()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.start());
    QByteArray tuning(85, '\x11');
    tuning[0] = 1;
    {
        Line line(unit.linkPath());
        QVERIFY(line.open());
        line.send(SerialFrame::encode(0xA4, tuning));
        QTRY_COMPARE_WITH_TIMEOUT(line.count(0xA4), 1, 5000);
        line.send(SerialFrame::startUpload(2)); // left running on purpose
        QTRY_VERIFY_WITH_TIMEOUT(line.count(0xA5) > 0, 5000);
        line.close();
    }
    // A second configurator finds the line and the values again.
    Line line(unit.linkPath());
    QVERIFY(line.open());
    line.send(SerialFrame::shortFrame(0xA3, 1));
    QTRY_COMPARE_WITH_TIMEOUT(line.count(0xA3), 1, 5000);
    QCOMPARE(line.last(0xA3), tuning);
    QTRY_VERIFY_WITH_TIMEOUT(line.count(0xA5) > 0, 5000);
}

void TestVunitPty::refusesWhatItIsTold()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.start({ "--refuse", "0xA3", "--refuse", "FF" }));
    Line line(unit.linkPath());
    QVERIFY(line.open());
    line.send(SerialFrame::shortFrame(0xA3, 0));
    line.send(SerialFrame::encode(0xFF));
    line.send(SerialFrame::shortFrame(0xA7, 0));
    QTRY_COMPARE_WITH_TIMEOUT(line.heard.size(), 3, 5000);
    QCOMPARE(line.last(0xA3).toHex(), QByteArray("ee"));
    QCOMPARE(line.last(0xFF).toHex(), QByteArray("ee"));
    QCOMPARE(line.last(0xA7).size(), 17);
}

void TestVunitPty::terminateRemovesTheLink()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.start());
    QVERIFY(QFileInfo(unit.linkPath()).isSymLink());
    unit.process().terminate();
    QVERIFY(unit.process().waitForFinished(10000));
    QCOMPARE(unit.process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(unit.process().exitCode(), 0);
    QVERIFY(!QFileInfo(unit.linkPath()).isSymLink());
}

QTEST_GUILESS_MAIN(TestVunitPty)
#include "tst_vunit_pty.moc"
