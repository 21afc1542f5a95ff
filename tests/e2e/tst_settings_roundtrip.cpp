// The key and comprehensive settings travel through the whole program and
// the virtual unit over a pty: read, edit and write, save the parameter
// file, factory reset, load the file and write it all back. The unit must
// then answer both sections' reads exactly as before the reset.
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "MSpinBox.h"
#include "MainWindow.h"
#include "Messages.h"
#include "SettingPage.h"
#include "VunitProcess.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

namespace
{
using Answers = QMap<int, QByteArray>;

// The stored groups each section reads. Not compared: the battery and
// signal (4), the devices found (0) and the channel reports (3), which are
// no settings.
const QMap<int, QVector<int>> kStoredCodes { { SectionButtons, { 5, 7, 15 } },
    { SectionComprehensive, { 11, 40, 21, 26, 29, 36, 42, 9, 68, 70, 72 } } };
} // namespace

class TestSettingsRoundTrip : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void unitHoldsTheSameAfterResetAndFileLoad_data();
    void unitHoldsTheSameAfterResetAndFileLoad();

private:
    Answers read(int section);
    template <typename T> T *control(int section, const char *name);

    MainWindow *m_window = nullptr;
    QSignalSpy *m_spy = nullptr;
};

template <typename T> T *TestSettingsRoundTrip::control(int section, const char *name)
{
    T *found = m_window->hub()->page(section)->findChild<T *>(QLatin1String(name));
    if (!found)
        qFatal("no control %s", name);
    return found;
}

// Opens the section from the hub's menu (its prelude and read group) and
// returns the answers of its stored groups.
Answers TestSettingsRoundTrip::read(int section)
{
    m_spy->clear();
    m_window->hub()->menuButton(section)->click();
    Answers answers;
    const QVector<int> codes = kStoredCodes.value(section);
    auto collect = [&]() {
        for (const QList<QVariant> &args : qAsConst(*m_spy)) {
            const int code = args.at(0).value<CodeID>();
            if (codes.contains(code))
                answers.insert(code, args.at(1).toByteArray());
        }
        return answers.size() == codes.size();
    };
    if (!QTest::qWaitFor(collect, 5000))
        qWarning("section %d answered %d of %d groups", section, int(answers.size()), int(codes.size()));
    return answers;
}

void TestSettingsRoundTrip::unitHoldsTheSameAfterResetAndFileLoad_data()
{
    QTest::addColumn<QString>("model");
    QTest::newRow("ALDER") << "ALDER";
    QTest::newRow("LARCH: 24 key kinds in their own order") << "LARCH";
}

void TestSettingsRoundTrip::unitHoldsTheSameAfterResetAndFileLoad()
{
    QFETCH(QString, model);
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.startWithApp({ QStringLiteral("--model"), model }));

    const QString file = dir.filePath(QStringLiteral("settings.cfg"));
    Messages::setResponder([](const Messages::Shown &) { return true; });
    Messages::setFileResponder([&file](const QString &, const QString &, const QString &) { return file; });

    MainWindow window;
    m_window = &window;
    QSignalSpy spy(&window, &MainWindow::signal_information);
    m_spy = &spy;
    window.show();
    QTRY_VERIFY_WITH_TIMEOUT(window.hub(), 10000);
    window.showHub();
    ChannelListenInterface *hub = window.hub();
    using Action = ChannelListenInterface::Action;

    // Away from the factory values first, through the pages' own writes.
    read(SectionButtons);
    control<QComboBox>(SectionButtons, "sckey2_key1")->setCurrentIndex(0);
    control<MSpinBox>(SectionButtons, "sckey2_value1")->setM_currentValue(-99);
    control<MSpinBox>(SectionButtons, "ckey3_step")->setM_currentValue(42);
    control<QComboBox>(SectionButtons, "keyGear_5")->setCurrentIndex(2);
    hub->actionButton(Action::WriteData)->click();
    read(SectionComprehensive);
    control<QComboBox>(SectionComprehensive, "hidMap_1")->setCurrentIndex(3);
    control<MSpinBox>(SectionComprehensive, "throttleHoldValue")->setM_currentValue(77);
    control<MSpinBox>(SectionComprehensive, "holdSpeed")->setM_currentValue(0.7);
    control<MSpinBox>(SectionComprehensive, "lowVoltage")->setM_currentValue(7.35);
    control<QComboBox>(SectionComprehensive, "baud")->setCurrentIndex(2);
    control<QComboBox>(SectionComprehensive, "sbusControl")->setCurrentIndex(2);
    hub->actionButton(Action::WriteData)->click();

    Answers before = read(SectionButtons);
    before.insert(read(SectionComprehensive));
    QCOMPARE(before.size(), 14);
    QCOMPARE(before.value(36).toHex(), QByteArray("004b0000")); // 19200 went out
    QCOMPARE(before.value(29).toHex(), QByteArray("0723")); // 7.35 V

    hub->actionButton(Action::SaveFile)->click();
    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const QByteArray text = saved.readAll();
    // The keys' lines after the channel hold's, the comprehensive ones after them.
    QVERIFY(text.indexOf("<sbus2-2>") < text.indexOf("<ckeyMap>"));
    QVERIFY(text.indexOf("</keyGear>\r\n<hidMap>") > 0);
    QVERIFY(text.indexOf("</sbusControl-2>\r\n") < text.indexOf("</body>"));

    hub->actionButton(Action::FactoryReset)->click(); // on the comprehensive section
    Answers reset = read(SectionButtons);
    reset.insert(read(SectionComprehensive));
    QVERIFY(reset != before);

    hub->actionButton(Action::LoadFile)->click(); // and confirmed: the write-all
    Answers after = read(SectionButtons);
    after.insert(read(SectionComprehensive));
    // No intended differences in these groups: every value the page shows
    // travels through the file and back unchanged.
    for (auto it = before.cbegin(); it != before.cend(); ++it)
        QCOMPARE(after.value(it.key()).toHex(), it.value().toHex());

    // The page's search button asks the unit, which finds two or three devices.
    auto *devices = control<QTreeWidget>(SectionComprehensive, "deviceList");
    devices->clear();
    control<QPushButton>(SectionComprehensive, "searchDevices")->click();
    QTRY_VERIFY(devices->topLevelItemCount() >= 2);

    Messages::setResponder({});
    Messages::setFileResponder({});
    m_window = nullptr;
    m_spy = nullptr;
    unit.terminate();
}

QTEST_MAIN(TestSettingsRoundTrip)
#include "tst_settings_roundtrip.moc"
