#include "MDlg.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

class TestMDlg : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void buttonsAnswerAndClose_data();
    void buttonsAnswerAndClose();
    void closingByTitleBarAnswersNothing();
    void messageOnlyDialogShowsItsText();
};

void TestMDlg::buttonsAnswerAndClose_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("answer");
    QTest::newRow("是") << "pushButton_yes" << true;
    QTest::newRow("否") << "pushButton_no" << false;
}

void TestMDlg::buttonsAnswerAndClose()
{
    QFETCH(QString, button);
    QFETCH(bool, answer);
    MDlg dialog(nullptr, true);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Dialog"));
    QCOMPARE(dialog.size(), QSize(300, 150));
    dialog.show();
    QSignalSpy spy(&dialog, &MDlg::signal_dialog);
    QTest::mouseClick(dialog.findChild<QPushButton *>(button), Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toBool(), answer);
    QVERIFY(!dialog.isVisible());
}

void TestMDlg::closingByTitleBarAnswersNothing()
{
    MDlg dialog(nullptr, true);
    dialog.show();
    QSignalSpy spy(&dialog, &MDlg::signal_dialog);
    dialog.close();
    QCOMPARE(spy.count(), 0);
}

void TestMDlg::messageOnlyDialogShowsItsText()
{
    MDlg dialog(nullptr, false);
    const QString text = QStringLiteral("地面端模组恢复出厂设置成功");
    dialog.setText(text);
    dialog.show();
    QVERIFY(dialog.findChild<QPushButton *>("pushButton_yes")->isHidden());
    QVERIFY(dialog.findChild<QPushButton *>("pushButton_no")->isHidden());
    auto *label = dialog.findChild<QLabel *>("label");
    QCOMPARE(label->text(), text);
    QCOMPARE(label->font().family(), QStringLiteral("Microsoft YaHei UI"));
    QCOMPARE(label->font().pointSize(), 13);
    QVERIFY(label->isVisible());
}

QTEST_MAIN(TestMDlg)
#include "tst_mdlg.moc"
