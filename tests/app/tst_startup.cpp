#include "DataRoot.h"
#include "startup.h"

#include <QLockFile>
#include <QSysInfo>
#include <QTest>

/// One program a data root, and the platform that it asks for.
class tst_startup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFreeDataRootIsTakenAndGivenBack();
    void aSecondLivingProgramIsToldSo();
    void theLockOfADeadProgramIsTakenOver();
    void aLockThatWasCutShortIsTakenOver();
    void aTakeoverThatWasCutShortIsNoHindrance_data();
    void aTakeoverThatWasCutShortIsNoHindrance();
    void whereNoLockCanBeMadeTheProgramGoesOn();
    void x11IsAskedForWhereThereIsAChoice_data();
    void x11IsAskedForWhereThereIsAChoice();
};

namespace {
QString lockName()
{
    return QString::fromLatin1(startup::lockName);
}

/// No process has this number: it lies beyond the highest one that the system gives.
QByteArray deadOwner()
{
    return "99999999\nkelmoran\n" + QSysInfo::machineHostName().toUtf8() + "\n" +
           QSysInfo::machineUniqueId() + "\n" + QSysInfo::bootUniqueId() + "\n";
}

void setVariable(const char *name, const QByteArray &value)
{
    if (value.isEmpty())
        qunsetenv(name);
    else
        qputenv(name, value);
}
} // namespace

void tst_startup::aFreeDataRootIsTakenAndGivenBack()
{
    const DataRoot root;
    const Boxes boxes;
    {
        QLockFile lock(lockName());
        QVERIFY(startup::takeDataRoot(lock));
        QVERIFY(lock.isLocked());
        QVERIFY(root.exists(QStringLiteral("kelmoran.lock")));
    }
    QVERIFY(!root.exists(QStringLiteral("kelmoran.lock")));
}

void tst_startup::aSecondLivingProgramIsToldSo()
{
    const DataRoot root;
    Boxes boxes;
    QLockFile first(lockName());
    QVERIFY(startup::takeDataRoot(first));
    QLockFile second(lockName());
    QVERIFY(!startup::takeDataRoot(second));
    QVERIFY(!second.isLocked());

    const auto messages = boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QCOMPARE(messages[0].text,
             QStringLiteral("Kelmoran is already running with the same data folders."));
    QVERIFY(first.isLocked());
}

void tst_startup::theLockOfADeadProgramIsTakenOver()
{
    const DataRoot root;
    const Boxes boxes;
    root.write(QStringLiteral("kelmoran.lock"), deadOwner());
    QLockFile lock(lockName());
    QVERIFY(startup::takeDataRoot(lock));
    QVERIFY(lock.isLocked());
}

void tst_startup::aLockThatWasCutShortIsTakenOver()
{
    const DataRoot root;
    const Boxes boxes;
    root.write(QStringLiteral("kelmoran.lock"), "");
    QLockFile lock(lockName());
    QVERIFY(startup::takeDataRoot(lock));
    QVERIFY(lock.isLocked());
}

void tst_startup::aTakeoverThatWasCutShortIsNoHindrance_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");

    QTest::newRow("before it was named") << QByteArray("") << QByteArray();
    QTest::newRow("with a name in it") << deadOwner() << QByteArray();
    QTest::newRow("that of a takeover") << deadOwner() << QByteArray("");
}

void tst_startup::aTakeoverThatWasCutShortIsNoHindrance()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    const DataRoot root;
    const Boxes boxes;
    root.write(QStringLiteral("kelmoran.lock"), deadOwner());
    root.write(QStringLiteral("kelmoran.lock.rmlock"), first);
    if (!second.isNull())
        root.write(QStringLiteral("kelmoran.lock.rmlock.rmlock"), second);
    QLockFile lock(lockName());
    QVERIFY(startup::takeDataRoot(lock));
    QVERIFY(lock.isLocked());
    QVERIFY(!root.exists(QStringLiteral("kelmoran.lock.rmlock")));
}

void tst_startup::whereNoLockCanBeMadeTheProgramGoesOn()
{
    const DataRoot root;
    const Boxes boxes;
    QLockFile lock(QStringLiteral("../no such folder/kelmoran.lock"));
    QVERIFY(startup::takeDataRoot(lock));
    QVERIFY(!lock.isLocked());
}

void tst_startup::x11IsAskedForWhereThereIsAChoice_data()
{
    QTest::addColumn<QByteArray>("wayland");
    QTest::addColumn<QByteArray>("x11");
    QTest::addColumn<QByteArray>("chosen");
    QTest::addColumn<QByteArray>("platform");

    QTest::newRow("both") << QByteArray("wayland-0") << QByteArray(":0") << QByteArray()
                          << QByteArray("xcb");
    QTest::newRow("both, and somebody has chosen")
        << QByteArray("wayland-0") << QByteArray(":0") << QByteArray("wayland")
        << QByteArray("wayland");
    QTest::newRow("Wayland alone")
        << QByteArray("wayland-0") << QByteArray() << QByteArray() << QByteArray();
    QTest::newRow("X11 alone") << QByteArray() << QByteArray(":0") << QByteArray() << QByteArray();
}

void tst_startup::x11IsAskedForWhereThereIsAChoice()
{
    QFETCH(QByteArray, wayland);
    QFETCH(QByteArray, x11);
    QFETCH(QByteArray, chosen);
    QFETCH(QByteArray, platform);
    setVariable("WAYLAND_DISPLAY", wayland);
    setVariable("DISPLAY", x11);
    setVariable("QT_QPA_PLATFORM", chosen);
    if (platform == "xcb")
        QTest::ignoreMessage(QtInfoMsg,
                             "Using X11: under Wayland a program can't place the pointer.");
    startup::prepareEnvironment();
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), platform);
}

QTEST_MAIN(tst_startup)
#include "tst_startup.moc"
