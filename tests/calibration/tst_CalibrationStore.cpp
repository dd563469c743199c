#include "Calibration.h"

#include "DataRoot.h"

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>

// The state side of the class: the handle on the session store.

namespace {

const QString screenPix = u"Parameters/screen.pix"_qs;
const QByteArray calibrated = "\x00\x00\x01\x0e"_qba
                              "\x00\x00\x01\x40"_qba
                              "\x00\x00\x00\x00"_qba; // 270, 320, 60 Hz

/// A catalogue with one word in it.
class OneWord : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char * /*disambiguation*/,
                      int /*n*/) const override
    {
        return qstrcmp(context, "Calibration") == 0 && qstrcmp(sourceText, "PAUSE") == 0
                   ? u"UNTERBRECHUNG"_qs
                   : QString();
    }
};

} // namespace

class tst_CalibrationStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aValueSetThroughOneObjectIsReadThroughAnother()
    {
        const DataRoot root;
        Calibration one;
        const Calibration other;
        one.setLanguage(2);
        one.setPatientName(u"Muster Anna 02.03.1950"_qs);
        one.setGender(u"Mrs."_qs);
        one.setLastName(u"Muster"_qs);
        one.setFirstName(u"Anna"_qs);
        one.setDob(QDate(1950, 3, 2));
        QCOMPARE(other.isLanguage(), 2);
        QCOMPARE(other.isPatientName(), u"Muster Anna 02.03.1950"_qs);
        QCOMPARE(other.isGender(), u"Mrs."_qs);
        QCOMPARE(other.isLastName(), u"Muster"_qs);
        QCOMPARE(other.isFirstName(), u"Anna"_qs);
        QCOMPARE(other.isDob(), QDate(1950, 3, 2));
        sessionStore().siteCode = u"FR01"_qs;
        QCOMPARE(other.isSiteCode(), u"FR01"_qs);
    }

    void eachFlagIsItsOwn_data()
    {
        using Set = void (Calibration::*)(bool);
        using Is = bool (Calibration::*)() const;
        QTest::addColumn<Set>("set");
        QTest::addColumn<Is>("is");
        QTest::newRow("pitch error") << &Calibration::setPitchError << &Calibration::isPitchError;
        QTest::newRow("new patient") << &Calibration::setNewPatient << &Calibration::isNewPatient;
        QTest::newRow("assessor") << &Calibration::setAssessor << &Calibration::isAssessor;
        QTest::newRow("escape") << &Calibration::setEscapeSeq << &Calibration::isEscapeSeq;
    }
    void eachFlagIsItsOwn()
    {
        using Set = void (Calibration::*)(bool);
        using Is = bool (Calibration::*)() const;
        QFETCH(const Set, set);
        QFETCH(const Is, is);
        const DataRoot root;
        Calibration handle;
        QVERIFY(!(handle.*is)());
        (handle.*set)(true);
        QVERIFY((handle.*is)());
        QCOMPARE(int(handle.isPitchError()) + int(handle.isNewPatient()) +
                     int(handle.isAssessor()) + int(handle.isEscapeSeq()),
                 1);
        (handle.*set)(false);
        QVERIFY(!(handle.*is)());
    }

    void eachSessionNumberIsItsOwn_data()
    {
        using Set = void (Calibration::*)(int);
        using Is = int (Calibration::*)() const;
        QTest::addColumn<Set>("set");
        QTest::addColumn<Is>("is");
        QTest::newRow("T1") << &Calibration::setSessionNb_T1 << &Calibration::isSessionNb_T1;
        QTest::newRow("T2") << &Calibration::setSessionNb_T2 << &Calibration::isSessionNb_T2;
        QTest::newRow("T3") << &Calibration::setSessionNb_T3 << &Calibration::isSessionNb_T3;
        QTest::newRow("T4") << &Calibration::setSessionNb_T4 << &Calibration::isSessionNb_T4;
        QTest::newRow("T5") << &Calibration::setSessionNb_T5 << &Calibration::isSessionNb_T5;
        QTest::newRow("T6") << &Calibration::setSessionNb_T6 << &Calibration::isSessionNb_T6;
        QTest::newRow("T7") << &Calibration::setSessionNb_T7 << &Calibration::isSessionNb_T7;
    }
    void eachSessionNumberIsItsOwn()
    {
        using Set = void (Calibration::*)(int);
        using Is = int (Calibration::*)() const;
        QFETCH(const Set, set);
        QFETCH(const Is, is);
        const DataRoot root;
        Calibration handle;
        (handle.*set)(17);
        QCOMPARE((handle.*is)(), 17);
        QCOMPARE(handle.isSessionNb_T1() + handle.isSessionNb_T2() + handle.isSessionNb_T3() +
                     handle.isSessionNb_T4() + handle.isSessionNb_T5() + handle.isSessionNb_T6() +
                     handle.isSessionNb_T7(),
                 17);
    }

    void theScreenIsReadFromItsFile()
    {
        const DataRoot root;
        root.write(screenPix, calibrated);
        sessionStore().frequency = 1;
        Calibration handle;
        handle.goReadParam();
        QCOMPARE(handle.isHorzPitch(), 270);
        QCOMPARE(handle.isVertPitch(), 320);
        QCOMPARE(handle.isFrequency(), 0);
    }

    void withoutItsFileEachReadingWarnsOnceAndTheStoreStays()
    {
        const DataRoot root;
        Boxes boxes;
        sessionStore().horzPixel = 1;
        sessionStore().vertPixel = 2;
        sessionStore().frequency = 1;
        Calibration handle;
        for (int i = 0; i < 2; ++i) {
            handle.goReadParam();
            const auto told = boxes.take();
            QCOMPARE(told.size(), 1);
            QCOMPARE(int(told.at(0).kind), int(messages::Kind::Warning));
            QCOMPARE(told.at(0).title, u"Error"_qs);
            QCOMPARE(told.at(0).text, u"Failed to open screen.pix\nNo such file or directory"_qs);
            QCOMPARE(boxes.parent(), &handle);
        }
        QCOMPARE(handle.isHorzPitch(), 1);
        QCOMPARE(handle.isVertPitch(), 2);
        QCOMPARE(handle.isFrequency(), 1);
    }

    void aNewFrequencyIsFiledWithThePixelsOfTheFile()
    {
        const DataRoot root;
        root.write(screenPix, calibrated);
        sessionStore().horzPixel = 1;
        sessionStore().vertPixel = 2;
        Calibration handle;
        handle.setFrequency(1);
        QCOMPARE(root.bytes(screenPix), QByteArray::fromHex("0000010e 00000140 00000001"));
        sessionStore() = SessionStore();
        handle.goReadParam();
        QCOMPARE(handle.isFrequency(), 1);
        QCOMPARE(handle.isHorzPitch(), 270);
        QCOMPARE(handle.isVertPitch(), 320);
    }

    void aFrequencyThatCannotBeFiledHoldsForThisRun()
    {
        const DataRoot root;
        root.block(screenPix);
        Boxes boxes;
        Calibration handle;
        handle.setFrequency(1);
        const auto told = boxes.take();
        QCOMPARE(told.size(), 2); // it could neither be read nor written
        for (const messages::Message &message : told) {
            QCOMPARE(message.title, u"Error"_qs);
            QVERIFY(message.text.startsWith(u"Failed to open screen.pix\n"));
        }
        QCOMPARE(handle.isFrequency(), 1);
    }

    void aFileThatCannotBeReadIsNotReplacedByAStoreWithoutPixels()
    {
        const DataRoot root;
        // Can be opened, but its first bytes can't be read.
        QVERIFY(QFile::link(u"/proc/self/mem"_qs, root.path(screenPix)));
        Boxes boxes;
        Calibration handle;
        handle.setFrequency(1);
        const auto told = boxes.take();
        QCOMPARE(told.size(), 1);
        QCOMPARE(told.at(0).text, u"Failed to open screen.pix\nInput/output error"_qs);
        QVERIFY(QFileInfo(root.path(screenPix)).isSymLink());
        QCOMPARE(handle.isFrequency(), 1);

        sessionStore().horzPixel = 270;
        sessionStore().vertPixel = 320;
        handle.setFrequency(1); // what was read at the start is all there, and is written
        QCOMPARE(boxes.take().size(), 2);
    }

    void theWordsForThePhasesAreTold()
    {
        const Calibration handle;
        QCOMPARE(handle.isMode(0), u"INSTRUCTIONS"_qs);
        QCOMPARE(handle.isMode(1), u"TRAINING"_qs);
        QCOMPARE(handle.isMode(2), u"PAUSE"_qs);
        QCOMPARE(handle.isMode(3), u"ERROR"_qs);
    }

    void aWordIsTranslatedIfTheCatalogueHasIt()
    {
        const Calibration handle;
        OneWord catalogue;
        QCoreApplication::installTranslator(&catalogue);
        QCOMPARE(handle.isMode(2), u"UNTERBRECHUNG"_qs);
        QCOMPARE(handle.isMode(1), u"TRAINING"_qs);
    }

    void thePitchIsPrintedWhenAskedFor()
    {
        const DataRoot root;
        sessionStore().horzPixel = 270;
        sessionStore().vertPixel = 320;
        const Calibration handle;
        QLoggingCategory::setFilterRules(u"kelmoran.calibration.debug=true"_qs);
        QTest::ignoreMessage(QtDebugMsg, "horzPixel    270");
        QTest::ignoreMessage(QtDebugMsg, "vertPixel    320");
        handle.isHorzPitch();
        handle.isVertPitch();
        QLoggingCategory::setFilterRules(QString());
    }
};

QTEST_MAIN(tst_CalibrationStore)
#include "tst_CalibrationStore.moc"
