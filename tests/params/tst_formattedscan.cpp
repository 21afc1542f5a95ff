#include "FormattedScan.h"

#include <QtTest>

#include <limits>

using namespace FormattedScan;

class TestFormattedScan : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void intListsFillFromTheLeft_data();
    void intListsFillFromTheLeft();
    void mixedIntAndReals_data();
    void mixedIntAndReals();
    void wholeTextInt_data();
    void wholeTextInt();
    void wholeTextReal_data();
    void wholeTextReal();
};

using Ints = QVector<int>;

void TestFormattedScan::intListsFillFromTheLeft_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<Ints>("before");
    QTest::addColumn<int>("filled");
    QTest::addColumn<Ints>("after");

    const Ints sevens(4, 7);
    const QString four = intListPattern(4, ";");
    QTest::newRow("full list") << "1,2,3,4;" << four << sevens << 4 << Ints { 1, 2, 3, 4 };
    QTest::newRow("missing final ; still fills all")
        << "1,2,3,4" << four << sevens << 4 << Ints { 1, 2, 3, 4 };
    QTest::newRow("garbage stops, later fields keep their values")
        << "1,2,x,4;" << four << sevens << 2 << Ints { 1, 2, 7, 7 };
    QTest::newRow("short list keeps the tail") << "1,2" << four << sevens << 2 << Ints { 1, 2, 7, 7 };
    QTest::newRow("empty text fills nothing") << "" << four << sevens << 0 << sevens;
    QTest::newRow("blanks before numbers are skipped")
        << " 1,\t2,\n3, 4;" << four << sevens << 4 << Ints { 1, 2, 3, 4 };
    QTest::newRow("blank before a literal is a mismatch")
        << "1 ,2,3,4;" << four << sevens << 1 << Ints { 1, 7, 7, 7 };
    QTest::newRow("blank in the pattern takes any blanks") << "1  ,2"
                                                           << "%d ,%d" << Ints { 7, 7 } << 2 << Ints { 1, 2 };
    QTest::newRow("blank in the pattern takes no blanks") << "1,2"
                                                          << "%d ,%d" << Ints { 7, 7 } << 2 << Ints { 1, 2 };
    QTest::newRow("signs") << "-5,+6,-0,0;" << four << sevens << 4 << Ints { -5, 6, 0, 0 };
    QTest::newRow("lone sign is no number") << "-,2"
                                            << "%d,%d" << Ints { 7, 7 } << 0 << Ints { 7, 7 };
    QTest::newRow("hexadecimal stops after the 0") << "0x10,2"
                                                   << "%d,%d" << Ints { 7, 7 } << 1 << Ints { 0, 7 };
    QTest::newRow("huge numbers are held at the int bounds")
        << "99999999999999999999,-99999999999999999999"
        << "%d,%d" << Ints { 7, 7 } << 2
        << Ints { std::numeric_limits<int>::max(), std::numeric_limits<int>::min() };
    QTest::newRow("int bounds themselves")
        << "2147483647,-2147483648"
        << "%d,%d" << Ints { 7, 7 } << 2
        << Ints { std::numeric_limits<int>::max(), std::numeric_limits<int>::min() };
    QTest::newRow("pattern longer than the fields") << "1,2,3"
                                                    << "%d,%d,%d" << Ints { 7, 7 } << 2 << Ints { 1, 2 };
    QTest::newRow("row separators of key combinations")
        << "1,2,3;4,5,6;"
        << "%d,%d,%d;%d,%d,%d;" << Ints(6, 7) << 6 << Ints { 1, 2, 3, 4, 5, 6 };
    QTest::newRow("row separator missing")
        << "1,2,3,4,5,6;"
        << "%d,%d,%d;%d,%d,%d;" << Ints(6, 7) << 3 << Ints { 1, 2, 3, 7, 7, 7 };
    QTest::newRow("literal percent") << "5%,6"
                                     << "%d%%,%d" << Ints { 7, 7 } << 2 << Ints { 5, 6 };
    QTest::newRow("unknown conversion stops") << "1,abc"
                                              << "%d,%s" << Ints { 7, 7 } << 1 << Ints { 1, 7 };
    QTest::newRow("trailing text after the pattern is ignored")
        << "1,2;junk"
        << "%d,%d;" << Ints { 7, 7 } << 2 << Ints { 1, 2 };
    QTest::newRow("sixteen channels")
        << "0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15;" << intListPattern(16, ";") << Ints(16, 7) << 16
        << Ints { 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15 };
}

void TestFormattedScan::intListsFillFromTheLeft()
{
    QFETCH(QString, text);
    QFETCH(QString, pattern);
    QFETCH(Ints, before);
    QFETCH(int, filled);
    QFETCH(Ints, after);

    Ints values = before;
    QCOMPARE(scanInts(text, pattern, values.data(), values.size()), filled);
    QCOMPARE(values, after);
}

void TestFormattedScan::mixedIntAndReals_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("filled");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QVector<double>>("reals");

    using Reals = QVector<double>;
    QTest::newRow("throttle data") << "1,0.5,2,3;" << 4 << 1 << Reals { 0.5, 2, 3 };
    QTest::newRow("shortest forms") << "2,-12,.5,3." << 4 << 2 << Reals { -12, 0.5, 3 };
    QTest::newRow("exponents") << "0,1e1,-2.5E-1,+4e+0;" << 4 << 0 << Reals { 10, -0.25, 4 };
    QTest::newRow("e without digits is left for the literal") << "0,1e,2,3" << 2 << 0 << Reals { 1, 9, 9 };
    QTest::newRow("nan is not a setting") << "1,nan,2,3;" << 1 << 1 << Reals { 9, 9, 9 };
    QTest::newRow("beyond a double is not a setting") << "1,1e999,2,3;" << 1 << 1 << Reals { 9, 9, 9 };
    QTest::newRow("decimal comma splits the value") << "1,2,5,3,4;" << 4 << 1 << Reals { 2, 5, 3 };
    QTest::newRow("unit after a number stops") << "1,2.5s,3,4" << 2 << 1 << Reals { 2.5, 9, 9 };
    QTest::newRow("mode not a number") << "x,1,2,3" << 0 << 8 << Reals { 9, 9, 9 };
}

void TestFormattedScan::mixedIntAndReals()
{
    QFETCH(QString, text);
    QFETCH(int, filled);
    QFETCH(int, mode);
    QFETCH(QVector<double>, reals);

    int m = 8;
    double r[3] = { 9, 9, 9 };
    QCOMPARE(scan(text, "%d,%lg,%lg,%lg;", { &m, &r[0], &r[1], &r[2] }), filled);
    QCOMPARE(m, mode);
    QCOMPARE(QVector<double>({ r[0], r[1], r[2] }), reals);
}

void TestFormattedScan::wholeTextInt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");

    QTest::newRow("baud") << "115200" << 115200;
    QTest::newRow("surrounding blanks") << " \n12\t" << 12;
    QTest::newRow("trailing garbage") << "12abc" << 0;
    QTest::newRow("fraction") << "1.5" << 0;
    QTest::newRow("hexadecimal") << "0x10" << 0;
    QTest::newRow("beyond int") << "99999999999" << 0;
    QTest::newRow("empty") << "" << 0;
}

void TestFormattedScan::wholeTextInt()
{
    QFETCH(QString, text);
    QFETCH(int, value);
    QCOMPARE(wholeInt(text), value);
}

void TestFormattedScan::wholeTextReal_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");

    QTest::newRow("voltage") << "6.6" << 6.6;
    QTest::newRow("surrounding blanks") << "  8.4 " << 8.4;
    QTest::newRow("integer") << "7" << 7.0;
    QTest::newRow("garbage") << "volt" << 0.0;
    QTest::newRow("nan") << "nan" << 0.0;
    QTest::newRow("beyond a double") << "1e999" << 0.0;
}

void TestFormattedScan::wholeTextReal()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(wholeReal(text), value);
}

QTEST_APPLESS_MAIN(TestFormattedScan)
#include "tst_formattedscan.moc"
