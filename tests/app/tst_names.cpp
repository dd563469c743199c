#include "Desk.h"
#include "NewPatient.h"
#include "patientsList.h"

#include <QDateEdit>
#include <QPushButton>

/// Patients whose names are not those of a form's examples: each is registered, is there at the
/// next start, is chosen and tested, and has a folder in Archives and nowhere else.
class tst_names : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTypedNameComesThroughADay_data();
    void aTypedNameComesThroughADay();
    void aNameMadeByHandComesThroughADay_data();
    void aNameMadeByHandComesThroughADay();
};

namespace {

const char *const task2Template = "Languages/En/Kelmoran_Task2_en.html";

/// A letter and a mark over it, which are two characters.
QString combined()
{
    return QStringLiteral("Zoe\u0308 A\u030A\u0327ngstro\u0308m");
}

QString letters(int count)
{
    return QString(count, u'M');
}

void typePatient(const Desk &desk, const QString &lastName, const QString &firstName)
{
    desk.find<QAction>(QStringLiteral("actionAdd_patient"))->trigger();
    const auto *dialog = desk.window()->findChild<NewPatient *>();
    dialog->findChild<QLineEdit *>(QStringLiteral("le_lastName"))->insert(lastName);
    dialog->findChild<QLineEdit *>(QStringLiteral("le_firstName"))->insert(firstName);
    dialog->findChild<QDateEdit *>(QStringLiteral("de_dateOfBirth"))->setDate(QDate(1950, 3, 2));
    QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("pb_ok")), Qt::LeftButton);
}

/// The program ends and is started again.
void startAnew(Desk &desk)
{
    sessionStore() = SessionStore();
    desk.open();
    desk.time.advance(500);
}

QStringList entries(const Desk &desk, const QString &folder)
{
    return QDir(desk.root.path(folder))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

/// The only patient of the list is chosen and tested.
void spendADay(Desk &desk, const QString &lastName, const QString &firstName)
{
    const QString key = QStringLiteral("%1 %2 02.03.1950").arg(lastName, firstName);
    startAnew(desk);
    QCOMPARE(desk.patientNames(), QStringList{key});
    desk.choose(0);
    QCOMPARE(sessionStore().lastName, lastName);
    QCOMPARE(sessionStore().firstName, firstName);
    QCOMPARE(sessionStore().dob, QDate(1950, 3, 2));

    desk.playTest();
    QCOMPARE(patientsList::find(key).value(patientsList::SessionT1 + 1), QStringLiteral("1"));
    QCOMPARE(patientsList::read()->size(), 1);

    const QStringList folders = entries(desk, QStringLiteral("Archives"));
    QCOMPARE(folders.size(), 1);
    const QString folder = folders.constFirst();
    QVERIFY(key.size() > 100 || folder == QString(key).replace(u'/', u'_'));
    QCOMPARE(entries(desk, QStringLiteral("Archives/") + folder),
             QStringList{QStringLiteral("results_T2_%1.csv").arg(folder)});
    QCOMPARE(entries(desk, QString()),
             QStringList({QStringLiteral("Archives"), QStringLiteral("Languages"),
                          QStringLiteral("Parameters"), QStringLiteral("Results"),
                          QStringLiteral("bin")}));
}

} // namespace

void tst_names::aTypedNameComesThroughADay_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    const auto row = [](const char *name, const QString &typed, const QString &kept) {
        QTest::newRow(name) << typed << kept;
    };
    const auto same = [](const char *name, const QString &text) {
        QTest::newRow(name) << text << text;
    };
    same("Greek", QStringLiteral("Αθηνά Παπαδοπούλου"));
    same("Arabic", QStringLiteral("عبد الرحمن"));
    same("Chinese", QStringLiteral("王小明"));
    same("beyond the first plane", QStringLiteral("𠮷野 🙂"));
    same("combining marks", combined());
    same("right to left and back", QStringLiteral("a\u202Eb\u202Cc"));
    same("300 letters", letters(300));
    same("300 Chinese characters", QString(300, u'王'));
    same("two dots", QStringLiteral(".."));
    same("one dot", QStringLiteral("."));
    same("blanks", QStringLiteral("   "));
    same("nothing", QString());
    same("placeholders", QStringLiteral("%1 v_l_name"));
    row("a way up", QStringLiteral("../../etc"), QStringLiteral("....etc"));
    row("a slash", QStringLiteral("/"), QString());
    row("markup", QStringLiteral("<b>&amp;"), QStringLiteral("b&amp"));
    row("a line of a list", QStringLiteral("A;B\r\nMr.;C"), QStringLiteral("ABMr.C"));
}

void tst_names::aTypedNameComesThroughADay()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, kept);
    Desk desk;
    desk.root.write(QString::fromLatin1(task2Template), "v_l_name");
    desk.openWith("");
    typePatient(desk, typed, typed);
    desk.time.advance(200);
    QCOMPARE(sessionStore().lastName, kept);
    QCOMPARE(desk.patients()->currentText(), QStringLiteral("%1 %2 02.03.1950").arg(kept, kept));
    spendADay(desk, kept, kept);
}

void tst_names::aNameMadeByHandComesThroughADay_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("markup") << QStringLiteral("<b>&amp</b>");
    QTest::newRow("a way up") << QStringLiteral("../../..");
    QTest::newRow("from the root") << QStringLiteral("/etc");
    QTest::newRow("3000 letters") << letters(3000);
}

void tst_names::aNameMadeByHandComesThroughADay()
{
    QFETCH(const QString, name);
    Desk desk;
    desk.root.write(QString::fromLatin1(task2Template), "v_l_name");
    desk.openWith(QStringLiteral("Mr.;%1;%1;02.03.1950;0\r\n").arg(name).toUtf8());
    spendADay(desk, name, name);
}

QTEST_MAIN(tst_names)
#include "tst_names.moc"
