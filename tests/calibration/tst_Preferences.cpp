#include "Preferences.h"

#include "Calibration.h"
#include "DataRoot.h"

#include <QScreen>
#include <QTest>

namespace {

const QString screenPix = u"Parameters/screen.pix"_qs;
const QByteArray calibrated = "\x00\x00\x01\x0e"_qba
                              "\x00\x00\x01\x40"_qba
                              "\x00\x00\x00\x01"_qba; // 270, 320, 120 Hz

/// The dialog in a data root with a calibrated screen, whose values are in the store.
struct Desk
{
    DataRoot root;
    Boxes boxes;
    Preferences dialog;

    Desk()
    {
        root.write(screenPix, calibrated);
        sessionStore().horzPixel = 270;
        sessionStore().vertPixel = 320;
        sessionStore().frequency = 1;
    }

    QString text(const QString &name) const { return dialog.findChild<QLineEdit *>(name)->text(); }
    QComboBox *frequency() const { return dialog.findChild<QComboBox *>(u"cob_screenFreq"_qs); }
    void click(const QString &button) const
    {
        QTest::mouseClick(dialog.findChild<QPushButton *>(button), Qt::LeftButton);
    }
    Calibration *calibration() const { return dialog.findChild<Calibration *>(); }
};

} // namespace

class tst_Preferences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itShowsTheScreenAndTheCalibratedPixels()
    {
        Desk desk;
        desk.dialog.goPreferences();
        const QSize size = QGuiApplication::primaryScreen()->size();
        QVERIFY(desk.dialog.isVisible());
        QCOMPARE(desk.text(u"le_HorzScreenRes"_qs), QString::number(size.width()));
        QCOMPARE(desk.text(u"le_VertScreenRes"_qs), QString::number(size.height()));
        QCOMPARE(desk.text(u"le_horzPixelSize"_qs), u"270"_qs);
        QCOMPARE(desk.text(u"le_vertPixelSize"_qs), u"320"_qs);
        QCOMPARE(desk.frequency()->currentText(), u"120Hz"_qs);
    }

    void theFrequenciesStandInTheOrderOfTheirNumbers()
    {
        const Desk desk;
        QCOMPARE(desk.frequency()->count(), 2);
        QCOMPARE(desk.frequency()->itemText(0), u"60Hz"_qs);
        QCOMPARE(desk.frequency()->itemText(1), u"120Hz"_qs);
    }

    void onlyTheFrequencyCanBeChanged()
    {
        const Desk desk;
        const auto edits = desk.dialog.findChildren<QLineEdit *>();
        int fields = 0;
        for (const QLineEdit *edit : edits) {
            if (edit->window() != &desk.dialog)
                continue;
            ++fields;
            QVERIFY(edit->isReadOnly());
        }
        QCOMPARE(fields, 4);
        QVERIFY(!desk.frequency()->isEditable());
    }

    void anEmptyStoreShowsZeros()
    {
        Desk desk;
        sessionStore() = SessionStore();
        desk.dialog.goPreferences();
        QCOMPARE(desk.text(u"le_horzPixelSize"_qs), u"0"_qs);
        QCOMPARE(desk.text(u"le_vertPixelSize"_qs), u"0"_qs);
        QCOMPARE(desk.frequency()->currentIndex(), 0);
    }

    void bothGroupsOfControlsAreRaisedByThreePoints()
    {
        const Desk desk;
        const auto font = [&desk](const QString &name) {
            return desk.dialog.findChild<QWidget *>(name)->font();
        };
        QCOMPARE(font(u"lbl_screenFreq"_qs).family(), u"Arial"_qs);
        QCOMPARE(font(u"lbl_screenFreq"_qs).pointSize(), 12);
        QCOMPARE(font(u"lbl_screenResolution"_qs), font(u"lbl_unitVps"_qs));
        QCOMPARE(font(u"le_HorzScreenRes"_qs).family(), u"Courier New"_qs);
        QCOMPARE(font(u"le_HorzScreenRes"_qs).pointSize(), 12);
        QCOMPARE(font(u"cob_screenFreq"_qs), font(u"le_vertPixelSize"_qs));
    }

    void okWithoutAChangeRewritesTheSameValues()
    {
        Desk desk;
        desk.dialog.goPreferences();
        desk.click(u"pb_ok"_qs);
        QVERIFY(!desk.dialog.isVisible());
        QCOMPARE(desk.root.bytes(screenPix), calibrated);
    }

    void okFilesTheFrequency()
    {
        Desk desk;
        desk.dialog.goPreferences();
        desk.frequency()->setCurrentIndex(0);
        desk.click(u"pb_ok"_qs);
        QCOMPARE(desk.root.bytes(screenPix), QByteArray::fromHex("0000010e 00000140 00000000"));
        QCOMPARE(sessionStore().frequency, 0);
    }

    void okThatCannotFileClosesAllTheSame()
    {
        Desk desk;
        desk.root.block(screenPix);
        desk.dialog.goPreferences();
        desk.frequency()->setCurrentIndex(0);
        desk.click(u"pb_ok"_qs);
        QCOMPARE(desk.boxes.take().size(), 2); // neither read nor written
        QVERIFY(!desk.dialog.isVisible());
        QCOMPARE(sessionStore().frequency, 0);
    }

    void cancelChangesNothing()
    {
        Desk desk;
        desk.dialog.goPreferences();
        desk.frequency()->setCurrentIndex(0);
        desk.click(u"pb_cancel"_qs);
        QVERIFY(!desk.dialog.isVisible());
        QCOMPARE(desk.root.bytes(screenPix), calibrated);
        QCOMPARE(sessionStore().frequency, 1);
    }

    void aNewCalibrationDropsTheChosenFrequency()
    {
        Desk desk;
        desk.dialog.goPreferences();
        desk.frequency()->setCurrentIndex(0);
        desk.click(u"pb_reCalibrate"_qs);
        QVERIFY(!desk.dialog.isVisible());
        QVERIFY(desk.calibration()->isVisible());
        QVERIFY(desk.calibration()->isFullScreen());
        QCoreApplication::processEvents();
        QVERIFY(desk.calibration()->isVisible());

        QTest::keyClicks(desk.calibration()->focusWidget(), u"280"_qs);
        QTest::keyClick(desk.calibration()->focusWidget(), Qt::Key_Return);
        QTest::keyClicks(desk.calibration()->focusWidget(), u"150"_qs);
        QTest::keyClick(desk.calibration()->focusWidget(), Qt::Key_Return);
        QCOMPARE(desk.root.bytes(screenPix), QByteArray::fromHex("00000118 0000012c 00000001"));
        QCOMPARE(desk.text(u"le_horzPixelSize"_qs), u"270"_qs); // until the next opening
        desk.dialog.goPreferences();
        QCOMPARE(desk.text(u"le_horzPixelSize"_qs), u"280"_qs);
        QCOMPARE(desk.text(u"le_vertPixelSize"_qs), u"300"_qs);
        QCOMPARE(desk.frequency()->currentIndex(), 1);
    }

    void returnPressesNoButton()
    {
        Desk desk;
        desk.dialog.goPreferences();
        QTest::keyClick(&desk.dialog, Qt::Key_Return);
        QVERIFY(desk.dialog.isVisible());
    }
};

QTEST_MAIN(tst_Preferences)
#include "tst_Preferences.moc"
