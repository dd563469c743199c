#include "Books.h"
#include "DataRoot.h"
#include "rows.h"
#include "tables.h"

#include <QTest>

namespace {

constexpr char who[] = ";Mrs.;Doe;Jane;01/02/1950;";

/// A row of the attention task.
QByteArray trial(int rank, const QByteArray &rt, int error)
{
    return QByteArray(who) + "2;1;06/01/2025;09:00:01.000;1;" + QByteArray::number(rank) +
           ";1;;;;;;;;;" + rt + ";E;;;;;;;;" + QByteArray::number(error) + '\n';
}

QByteArray timing()
{
    const qsizetype columns = rows::timingHeader().count(';');
    return "06/01/2025;09:00:01.000" + QByteArray(columns - 1, ';') + '\n';
}

} // namespace

/// Whether the random assessor would see what is wrong in the files.
class tst_Books : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsWrongIsTold_data();
    void whatIsWrongIsTold();
    void aPatientWhoHasChangedIsTold_data();
    void aPatientWhoHasChangedIsTold();
    void aStrayFileIsTold();
};

void tst_Books::whatIsWrongIsTold_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<int>("timings");
    QTest::addColumn<QString>("wrong");
    const QByteArray first = trial(1, "300", 0);
    QTest::newRow("nothing") << first + trial(2, "2100", 1) + trial(2, "", 1) + trial(2, "250", 0)
                             << 4 << QString();
    QTest::newRow("a pause") << first + who + "paused\n" << 1 << QString();
    QTest::newRow("a new test") << first + who + "interrupted\n" + first << 2 << QString();
    QTest::newRow("half a line") << first.chopped(1) << 1 << QStringLiteral("half a line");
    QTest::newRow("a column too few")
        << QByteArray(first).replace(";E;", ";") << 1 << QStringLiteral("30 columns");
    QTest::newRow("a rank twice") << first + first << 2 << QStringLiteral("rank 2 was due");
    QTest::newRow("a rank left out")
        << first + trial(3, "300", 0) << 2 << QStringLiteral("rank 2 was due");
    QTest::newRow("too late") << trial(1, "2001", 0) << 1 << QStringLiteral("too late");
    QTest::newRow("a valid row without an answer")
        << trial(1, "", 0) << 1 << QStringLiteral("without a result");
    QTest::newRow("a trial of another session")
        << first + trial(2, "300", 0).replace(";2;1;", ";2;2;") << 2
        << QStringLiteral("another patient, task or session");
    QTest::newRow("a marker of no kind") << first + who + "stopped\n"
                                         << 1 << QStringLiteral("no kind");
    QTest::newRow("no times") << first << 0 << QStringLiteral("rows of their times");
}

void tst_Books::whatIsWrongIsTold()
{
    QFETCH(const QByteArray, rows);
    QFETCH(const int, timings);
    QFETCH(const QString, wrong);
    const DataRoot root;
    root.write(QStringLiteral("Parameters/patients_list.txt"), "");
    root.write(QStringLiteral("Results/output.csv"), tables::_headerArchive + rows);
    root.write(QStringLiteral("Results/timing.csv"),
               rows::timingHeader() + timing().repeated(timings));
    const QString told = Books(root.path(QString())).check();
    QVERIFY2(wrong.isEmpty() ? told.isEmpty() : told.contains(wrong), qPrintable(told));
}

void tst_Books::aPatientWhoHasChangedIsTold_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<bool>("fine");
    QTest::newRow("the same") << QByteArray("Mrs.;Doe;Jane;01.02.1950;0;0;0;0;0;0;0;0;0;0\r\n")
                              << true;
    QTest::newRow("her thresholds")
        << QByteArray("Mrs.;Doe;Jane;01.02.1950;0;0;0;0;0;0;0;17;33;0\r\n") << true;
    QTest::newRow("a session without a test")
        << QByteArray("Mrs.;Doe;Jane;01.02.1950;0;1;0;0;0;0;0;0;0;0\r\n") << false;
    QTest::newRow("another name") << QByteArray("Mrs.;Doe;June;01.02.1950;0;0;0;0;0;0;0;0;0;0\r\n")
                                  << false;
    QTest::newRow("a field too few")
        << QByteArray("Mrs.;Doe;Jane;01.02.1950;0;0;0;0;0;0;0;0;0\r\n") << false;
    QTest::newRow("half a line") << QByteArray("Mrs.;Doe;Jane;01.02.1950;0;0") << false;
    QTest::newRow("nobody") << QByteArray() << false;
}

void tst_Books::aPatientWhoHasChangedIsTold()
{
    QFETCH(const QByteArray, list);
    QFETCH(const bool, fine);
    const DataRoot root;
    const QString file = QStringLiteral("Parameters/patients_list.txt");
    root.write(file, "Mrs.;Doe;Jane;01.02.1950;0;0;0;0;0;0;0;0;0;0\r\n");
    Books books(root.path(QString()));
    books.chosen(QStringLiteral("Doe Jane 01.02.1950"));
    QCOMPARE(books.check(), QString());
    QVERIFY(QFile::remove(root.path(file))); // or the file of the same moment would be the same
    root.write(QStringLiteral("Parameters/other"), "");
    root.write(file, list);
    QCOMPARE(books.check().isEmpty(), fine);
}

void tst_Books::aStrayFileIsTold()
{
    const DataRoot root;
    root.write(QStringLiteral("Parameters/patients_list.txt"), "");
    root.write(QStringLiteral("Parameters/screen.pix"), QByteArray(12, '\0'));
    Books books(root.path(QString()));
    QCOMPARE(books.check(), QString());
    QCOMPARE(books.checkTree(), QString());
    root.write(QStringLiteral("bin/_patients_list.txt"), "");
    QVERIFY(books.checkTree().contains(QStringLiteral("_patients_list.txt")));
}

QTEST_GUILESS_MAIN(tst_Books)
#include "tst_Books.moc"
