#include "SessionStore.h"

#include <QTest>

class tst_SessionStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingStartsAtZeroFalseOrEmpty()
    {
        const SessionStore store;
        for (const int number : {store.horzPixel, store.vertPixel, store.frequency, store.language})
            QCOMPARE(number, 0);
        for (const int number : store.sessionNb)
            QCOMPARE(number, 0);
        for (const QString &text :
             {store.patientName, store.gender, store.lastName, store.firstName, store.siteCode})
            QVERIFY(text.isEmpty());
        for (const bool flag :
             {store.pitchError, store.newPatient, store.assessor, store.escapeSeq})
            QVERIFY(!flag);
        QVERIFY(store.dob.isNull());
    }

    void thereIsOneCopy()
    {
        sessionStore().horzPixel = 270;
        QCOMPARE(sessionStore().horzPixel, 270);
        QCOMPARE(&sessionStore(), &sessionStore());
    }
};

QTEST_GUILESS_MAIN(tst_SessionStore)
#include "tst_SessionStore.moc"
