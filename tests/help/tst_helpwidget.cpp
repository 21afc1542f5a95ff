#include "AppPaths.h"
#include "HelpWidget.h"

#include <QLabel>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QTranslator>
#include <QTreeWidget>
#include <QtTest>

namespace
{

const char *const kTopicFiles[] = { "channelInterface", "sbusChannelSetting", "channelHold", "buttonSetting",
    "comprehensiveSetting", "rfradioSetting", "customSetting", "copyright" };
const char *const kChineseTitles[]
    = { "通道配置", "SBUS设置", "通道保持", "按键设置", "综合设置", "图传设置", "自定义设置", "版权信息" };
const char *const kEnglishTitles[] = { "Channel Configuration", "SBUS Setting", "Channel Hold", "Key Setting",
    "Comprehensive Setting", "RF Radio Setting", "Custom Setting", "Copyright" };
constexpr int kTopicCount = 8;

QString fileName(int topic, bool chinese)
{
    return QString::fromLatin1(kTopicFiles[topic]) + (chinese ? ".ini" : "_english.ini");
}

// What the test writes into a help file: its own name, a line break the
// way Windows editors write it, Chinese text and characters a rich-text
// view would swallow.
QByteArray contentOf(const QString &name)
{
    return (name + "\r\n帮助 <b>help</b> & more\n").toUtf8();
}

} // namespace

class TestHelpWidget : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void localeChoosesTheTexts_data();
    void localeChoosesTheTexts();
    void clickingATopicShowsItsFile_data();
    void clickingATopicShowsItsFile();
    void englishItemTextFindsItsTopic();
    void missingFileLeavesTheView();
    void closingTellsTheHub();
    void englishTextsQuoteTheEnglishLabels_data();
    void englishTextsQuoteTheEnglishLabels();
    void topicListShowsWholeEnglishNames();

private:
    QTreeWidget *tree(HelpWidget &w) { return w.findChild<QTreeWidget *>("treeWidget"); }
    QLabel *view(HelpWidget &w) { return w.findChild<QLabel *>("label"); }
    void click(HelpWidget &w, int topic);

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestHelpWidget::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
    for (int topic = 0; topic < kTopicCount; ++topic) {
        for (bool chinese : { true, false }) {
            QFile file(m_dir->filePath(fileName(topic, chinese)));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(contentOf(fileName(topic, chinese)));
        }
    }
    AppPaths::setAppDir(m_dir->path());
}

void TestHelpWidget::click(HelpWidget &w, int topic)
{
    QTreeWidgetItem *item = tree(w)->topLevelItem(topic);
    QVERIFY(item);
    const QRect rect = tree(w)->visualItemRect(item);
    QVERIFY(rect.isValid());
    QTest::mouseClick(tree(w)->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
}

void TestHelpWidget::localeChoosesTheTexts_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<bool>("chinese");

    QTest::newRow("zh_CN") << "zh_CN" << true;
    QTest::newRow("zh_TW") << "zh_TW" << false;
    QTest::newRow("zh") << "zh" << false;
    QTest::newRow("en_US") << "en_US" << false;
    QTest::newRow("de_DE") << "de_DE" << false;
}

void TestHelpWidget::localeChoosesTheTexts()
{
    QFETCH(QString, locale);
    QFETCH(bool, chinese);

    HelpWidget w(nullptr, locale);
    QCOMPARE(w.windowTitle(), QString("帮助说明"));
    // It opens on the SBUS topic.
    QCOMPARE(tree(w)->currentItem(), tree(w)->topLevelItem(1));
    QCOMPARE(view(w)->text(), QString::fromUtf8(contentOf(fileName(1, chinese))));
    if (chinese) {
        QCOMPARE(tree(w)->font().family(), QString("Arial"));
    } else {
        QCOMPARE(tree(w)->font().family(), QString("Cambria"));
        QCOMPARE(tree(w)->font().pointSize(), 12);
    }
}

void TestHelpWidget::clickingATopicShowsItsFile_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<int>("topic");

    for (int topic = 0; topic < kTopicCount; ++topic) {
        QTest::newRow(qPrintable(QString("zh_CN ") + kTopicFiles[topic])) << "zh_CN" << topic;
        QTest::newRow(qPrintable(QString("en_US ") + kTopicFiles[topic])) << "en_US" << topic;
    }
}

void TestHelpWidget::clickingATopicShowsItsFile()
{
    QFETCH(QString, locale);
    QFETCH(int, topic);

    HelpWidget w(nullptr, locale);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    // Start from another topic so that every row is a real change.
    click(w, topic == 1 ? 0 : 1);
    click(w, topic);
    QCOMPARE(tree(w)->currentItem()->text(0), QString(kChineseTitles[topic]));
    QCOMPARE(view(w)->text(), QString::fromUtf8(contentOf(fileName(topic, locale == "zh_CN"))));
}

// With the English translation loaded the items read in English; they must
// find the same files.
void TestHelpWidget::englishItemTextFindsItsTopic()
{
    HelpWidget w(nullptr, "en_US");
    for (int topic = 0; topic < kTopicCount; ++topic)
        tree(w)->topLevelItem(topic)->setText(0, kEnglishTitles[topic]);
    tree(w)->setCurrentItem(tree(w)->topLevelItem(6));
    QCOMPARE(view(w)->text(), QString::fromUtf8(contentOf(fileName(6, false))));
    tree(w)->setCurrentItem(tree(w)->topLevelItem(0));
    QCOMPARE(view(w)->text(), QString::fromUtf8(contentOf(fileName(0, false))));
}

void TestHelpWidget::missingFileLeavesTheView()
{
    QVERIFY(QFile::remove(m_dir->filePath(fileName(2, true))));
    HelpWidget w(nullptr, "zh_CN");
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    const QString sbusText = view(w)->text();
    click(w, 2);
    QCOMPARE(tree(w)->currentItem(), tree(w)->topLevelItem(2));
    QCOMPARE(view(w)->text(), sbusText);
    click(w, 3);
    QCOMPARE(view(w)->text(), QString::fromUtf8(contentOf(fileName(3, true))));
}

void TestHelpWidget::closingTellsTheHub()
{
    HelpWidget w(nullptr, "zh_CN");
    QSignalSpy closed(&w, &HelpWidget::signal_helpWidget);
    w.show();
    QVERIFY(w.close());
    QCOMPARE(closed.count(), 1);
}

void TestHelpWidget::englishTextsQuoteTheEnglishLabels_data()
{
    QTest::addColumn<QString>("file");
    for (int topic = 0; topic < kTopicCount; ++topic)
        QTest::newRow(kTopicFiles[topic]) << QStringLiteral(QM_APP_DIR "/") + fileName(topic, false);
}

// An English reader sees the English interface: a Chinese label quoted in
// an English help text names nothing on the screen.
void TestHelpWidget::englishTextsQuoteTheEnglishLabels()
{
    QFETCH(QString, file);
    QFile f(file);
    QVERIFY(f.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(f.readAll());
    const QRegularExpressionMatch chinese
        = QRegularExpression(QStringLiteral("[\\x{3000}-\\x{9fff}\\x{ff00}-\\x{ffef}]+")).match(text);
    QVERIFY2(!chinese.hasMatch(), qPrintable(chinese.captured()));
}

// In English (the larger "Cambria" font) the longest topic name fits the
// list, also when the window is made small.
void TestHelpWidget::topicListShowsWholeEnglishNames()
{
    QTranslator english;
    QVERIFY(english.load(QStringLiteral(QM_APP_DIR "/translations/english.qm")));
    QCoreApplication::installTranslator(&english);
    HelpWidget w(nullptr, "en_US");
    QCoreApplication::removeTranslator(&english);
    w.resize(320, 300);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    const QFontMetrics fm(tree(w)->font());
    for (int topic = 0; topic < kTopicCount; ++topic) {
        const QString name = tree(w)->topLevelItem(topic)->text(0);
        QCOMPARE(name, QString(kEnglishTitles[topic]));
        QVERIFY2(fm.horizontalAdvance(name) < tree(w)->viewport()->width(), qPrintable(name));
    }
}

QTEST_MAIN(TestHelpWidget)
#include "tst_helpwidget.moc"
