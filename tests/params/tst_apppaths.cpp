// Where the program looks for its data and where it writes at run time: a
// build tree, an installed tree, and an installed tree the user cannot write.
#include "AppPaths.h"

#include <QSet>
#include <QTest>

class TestAppPaths : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void dataAndWritableDirs_data();
    void dataAndWritableDirs();
};

void TestAppPaths::dataAndWritableDirs_data()
{
    QTest::addColumn<QString>("exe");          // the executable's folder
    QTest::addColumn<QStringList>("dirs");     // folders that exist
    QTest::addColumn<QStringList>("writable"); // of those, the writable ones
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("writes");
    const QString user = QStringLiteral("/home/u/.local/share/quillmark");
    QTest::newRow("build tree") << "/b/bin" << QStringList { "/b/bin/config" } << QStringList { "/b/bin", "/b/bin/config" }
                                << "/b/bin" << "/b/bin";
    QTest::newRow("installed, writable") << "/p/bin" << QStringList { "/p/share/quillmark/config" }
                                         << QStringList { "/p/share/quillmark", "/p/share/quillmark/config" }
                                         << "/p/share/quillmark" << "/p/share/quillmark";
    QTest::newRow("installed, read-only") << "/usr/bin" << QStringList { "/usr/share/quillmark/config" } << QStringList {}
                                          << "/usr/share/quillmark" << user;
    QTest::newRow("installed, config read-only") << "/p/bin" << QStringList { "/p/share/quillmark/config" }
                                                 << QStringList { "/p/share/quillmark" } << "/p/share/quillmark"
                                                 << user;
    // Beside the program wins over an installed tree next to it.
    QTest::newRow("both") << "/p/bin" << QStringList { "/p/bin/config", "/p/share/quillmark/config" }
                          << QStringList { "/p/bin", "/p/bin/config" } << "/p/bin" << "/p/bin";
    QTest::newRow("nothing anywhere") << "/p/bin" << QStringList {} << QStringList {} << "/p/bin" << user;
}

void TestAppPaths::dataAndWritableDirs()
{
    QFETCH(QString, exe);
    QFETCH(QStringList, dirs);
    QFETCH(QStringList, writable);
    QFETCH(QString, data);
    QFETCH(QString, writes);
    const QSet<QString> existing(dirs.begin(), dirs.end());
    const QSet<QString> open(writable.begin(), writable.end());
    const QString got = AppPaths::dataDirFor(exe, [&](const QString &d) { return existing.contains(d); });
    QCOMPARE(got, data);
    QCOMPARE(AppPaths::writableDirFor(got, QStringLiteral("/home/u/.local/share/quillmark"),
                                      [&](const QString &d) { return open.contains(d); }),
             writes);
}

QTEST_GUILESS_MAIN(TestAppPaths)
#include "tst_apppaths.moc"
