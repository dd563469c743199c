#include "Calibration.h"

#include "DataRoot.h"

#include <QScreen>
#include <QTest>

#include <limits>

namespace {

const QString screenPix = u"Parameters/screen.pix"_qs;
const QByteArray formerFile = "\x00\x00\x00\xfa"_qba
                              "\x00\x00\x00\xfc"_qba
                              "\x00\x00\x00\x01"_qba; // 250, 252, 120 Hz

/// The dialog in a data root with a former calibration, and an assessor at the keyboard.
struct Desk
{
    DataRoot root;
    Boxes boxes;
    QWidget mainWindow;
    Calibration dialog;

    Desk()
    {
        mainWindow.show();
        root.write(screenPix, formerFile);
        dialog.goReadParam();
    }

    void open()
    {
        mainWindow.activateWindow(); // it is what remains when the dialog hides
        QCoreApplication::processEvents();
        dialog.goCalibration();
        QCoreApplication::processEvents(); // the window becomes the active one
    }

    template <typename Widget = QWidget>
    Widget *widget(const QString &name) const
    {
        auto *found = dialog.findChild<Widget *>(name);
        if (found == nullptr)
            qFatal("there is no %s", qPrintable(name));
        return found;
    }
    QLineEdit *horizontal() const { return widget<QLineEdit>(u"le_horzPitch"_qs); }
    QLineEdit *vertical() const { return widget<QLineEdit>(u"le_vertPitch"_qs); }

    /// Types into what has the focus.
    void type(const QString &text) const { QTest::keyClicks(focused(), text); }
    void press(Qt::Key key) const { QTest::keyClick(focused(), key); }
    void enter(const QString &text) const
    {
        type(text);
        press(Qt::Key_Return);
    }

    QWidget *focused() const
    {
        QWidget *focus = QApplication::focusWidget();
        return focus != nullptr ? focus : const_cast<Calibration *>(&dialog);
    }

    QStringList shown() const
    {
        QStringList names;
        for (const QString &name :
             {u"fr_horzCalibration"_qs, u"lbl_horzPitch"_qs, u"le_horzPitch"_qs,
              u"fr_vertCalibration"_qs, u"lbl_vertPitch"_qs, u"le_vertPitch"_qs}) {
            if (widget(name)->isVisible())
                names.append(name);
        }
        return names;
    }
};

QStringList horizontalLine()
{
    return {u"fr_horzCalibration"_qs, u"lbl_horzPitch"_qs, u"le_horzPitch"_qs};
}

QStringList verticalLine()
{
    return {u"fr_vertCalibration"_qs, u"lbl_vertPitch"_qs, u"le_vertPitch"_qs};
}

QList<int> store()
{
    return {sessionStore().horzPixel, sessionStore().vertPixel, sessionStore().frequency};
}

} // namespace

class tst_Calibration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itOpensAtTheHorizontalLineOnTheWholeScreen();
    void fieldsAndLinesStandAboutTheCentre();
    void aLaterSizeMovesThemAlong();
    void twoEntriesAreFiled();
    void theHorizontalLimitIsAHundredMicrometres_data();
    void theHorizontalLimitIsAHundredMicrometres();
    void theVerticalLimitIsFiftyMillimetres_data();
    void theVerticalLimitIsFiftyMillimetres();
    void aRefusalIsReadableAndHidesTheDialog();
    void aRefusedVerticalEntryStartsAgainAtTheHorizontalLine();
    void theFirstEntryBringsTheFrequencyOfTheFileBack();
    void escapeBeforeTheFirstEntryLeavesTheFrequencyAtSixtyHertz();
    void escapeReadsNoHalfTypedNumber();
    void escapeAtTheVerticalLineKeepsTheNewWidthForThisRunOnly();
    void closingTheWindowIsEscape();
    void noOtherKeyCloses();
    void withoutItsFileTheEntryGoesOnAfterOneWarning();
    void afterManyRoundsAnEntryIsStillReadOnce();
    void aFileThatCannotBeWrittenKeepsTheDialogOpen();
    void theVerticalFieldKeepsTheTextOfAFormerRound();
    void leavingAFieldReadsIt();
    void theSlotsAreSafeToRepeat();
};

void tst_Calibration::itOpensAtTheHorizontalLineOnTheWholeScreen()
{
    Desk desk;
    desk.open();
    QVERIFY(desk.dialog.isFullScreen());
    QCOMPARE(desk.dialog.geometry(), QGuiApplication::primaryScreen()->geometry());
    QCOMPARE(desk.shown(), horizontalLine());
    QCOMPARE(desk.horizontal()->text(), QString());
    QCOMPARE(QApplication::focusWidget(), desk.horizontal());
    QCOMPARE(sessionStore().frequency, 0);
}

void tst_Calibration::fieldsAndLinesStandAboutTheCentre()
{
    Desk desk;
    desk.open();
    const int x = desk.dialog.width() / 2;
    const int y = desk.dialog.height() / 2;
    for (const QString &label : {u"lbl_horzPitch"_qs, u"lbl_vertPitch"_qs})
        QCOMPARE(desk.widget(label)->pos(), QPoint(x - 500, y - 300));
    for (const QLineEdit *edit : {desk.horizontal(), desk.vertical()})
        QCOMPARE(edit->pos(), QPoint(x - 220, y - 300));
    QCOMPARE(desk.widget(u"fr_horzCalibration"_qs)->geometry(), QRect(x - 500, y - 10, 1001, 20));
    QCOMPARE(desk.widget(u"fr_vertCalibration"_qs)->geometry(), QRect(x - 10, y - 250, 20, 501));
}

void tst_Calibration::aLaterSizeMovesThemAlong()
{
    Desk desk;
    desk.open();
    desk.dialog.showNormal();
    desk.dialog.resize(1281, 1025);
    QCOMPARE(desk.widget(u"fr_horzCalibration"_qs)->pos(), QPoint(640 - 500, 512 - 10));
    QCOMPARE(desk.horizontal()->pos(), QPoint(640 - 220, 512 - 300));
}

void tst_Calibration::twoEntriesAreFiled()
{
    Desk desk;
    desk.open();
    desk.enter(u"270"_qs);
    QCOMPARE(sessionStore().horzPixel, 270);
    QCOMPARE(desk.shown(), verticalLine());
    QCOMPARE(QApplication::focusWidget(), desk.vertical());
    QCOMPARE(desk.root.bytes(screenPix), formerFile);

    desk.enter(u"160"_qs);
    QVERIFY(!desk.dialog.isVisible());
    QCOMPARE(store(), QList<int>({270, 320, 1}));
    QCOMPARE(desk.root.bytes(screenPix), QByteArray::fromHex("0000010e 00000140 00000001"));
    QVERIFY(!sessionStore().pitchError);
}

void tst_Calibration::theHorizontalLimitIsAHundredMicrometres_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("horzPixel");
    QTest::addColumn<bool>("taken");
    QTest::newRow("100") << u"100"_qs << 100 << true;
    QTest::newRow("99") << u"99"_qs << 99 << false;
    QTest::newRow("no upper limit") << u"2147483647"_qs << 2147483647 << true;
    QTest::newRow("zero") << u"0"_qs << 0 << false;
    QTest::newRow("negative") << u"-270"_qs << -270 << false;
    QTest::newRow("nothing") << QString() << 0 << false;
    QTest::newRow("letters") << u"abc"_qs << 0 << false;
    QTest::newRow("centimetres with a fraction") << u"27.5"_qs << 0 << false;
    QTest::newRow("beyond all numbers") << u"99999999999"_qs << 0 << false;
}
void tst_Calibration::theHorizontalLimitIsAHundredMicrometres()
{
    QFETCH(const QString, text);
    QFETCH(const bool, taken);
    Desk desk;
    desk.open();
    desk.enter(text);
    QTEST(sessionStore().horzPixel, "horzPixel");
    QCOMPARE(sessionStore().pitchError, !taken);
    QCOMPARE(desk.shown(), taken ? verticalLine() : QStringList());
    QCOMPARE(desk.boxes.take().size(), taken ? 0 : 1);
    QCOMPARE(desk.root.bytes(screenPix), formerFile);
}

void tst_Calibration::theVerticalLimitIsFiftyMillimetres_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("vertPixel");
    QTest::addColumn<bool>("taken");
    QTest::newRow("50") << u"50"_qs << 100 << true;
    QTest::newRow("49") << u"49"_qs << 98 << false;
    QTest::newRow("nothing") << QString() << 0 << false;
    QTest::newRow("letters") << u"abc"_qs << 0 << false;
    QTest::newRow("negative") << u"-160"_qs << -320 << false;
    const int most = std::numeric_limits<int>::max();
    QTest::newRow("twice is the greatest number") << u"1073741823"_qs << most - 1 << true;
    QTest::newRow("twice would overrun") << u"2147483647"_qs << most - 1 << true;
    QTest::newRow("twice would underrun") << u"-2147483648"_qs << -(most - 1) << false;
}
void tst_Calibration::theVerticalLimitIsFiftyMillimetres()
{
    QFETCH(const QString, text);
    QFETCH(const bool, taken);
    Desk desk;
    desk.open();
    desk.enter(u"270"_qs);
    desk.enter(text);
    QTEST(sessionStore().vertPixel, "vertPixel");
    QCOMPARE(sessionStore().pitchError, !taken);
    QVERIFY(!desk.dialog.isVisible());
    QCOMPARE(desk.boxes.take().size(), taken ? 0 : 1);
    QCOMPARE(desk.root.bytes(screenPix) == formerFile, !taken);
}

void tst_Calibration::aRefusalIsReadableAndHidesTheDialog()
{
    Desk desk;
    desk.open();
    int asked = 0;
    const messages::Handling box([&](QWidget *parent, const messages::Message &message) {
        ++asked;
        QCOMPARE(parent, &desk.dialog);
        QCOMPARE(int(message.kind), int(messages::Kind::Warning));
        QCOMPARE(message.title, u"Error"_qs);
        QCOMPARE(message.text, u"Please enter value in mm"_qs);
        QVERIFY(!desk.dialog.isVisible());
        QCOMPARE(desk.dialog.styleSheet(), u"background-color:rgb(230, 230, 230)"_qs);
        QVERIFY(!sessionStore().pitchError);
    });
    desk.enter(u"27"_qs);
    QCOMPARE(asked, 1);
    QCOMPARE(desk.dialog.styleSheet(), u"background-color:rgb(0, 0, 0)"_qs);
    QVERIFY(sessionStore().pitchError);
    QVERIFY(!desk.dialog.isVisible());
}

void tst_Calibration::aRefusedVerticalEntryStartsAgainAtTheHorizontalLine()
{
    Desk desk;
    desk.open();
    desk.enter(u"270"_qs);
    desk.enter(u"49"_qs);
    QCOMPARE(desk.boxes.take().size(), 1);
    desk.open(); // as the main window does when it sees the flag
    QCOMPARE(desk.shown(), horizontalLine());
    QCOMPARE(desk.horizontal()->text(), QString());
    QCOMPARE(QApplication::focusWidget(), desk.horizontal());
    desk.enter(u"280"_qs);
    desk.vertical()->selectAll();
    desk.enter(u"150"_qs);
    QCOMPARE(store(), QList<int>({280, 300, 1}));
    QVERIFY(!desk.dialog.isVisible());
}

void tst_Calibration::theFirstEntryBringsTheFrequencyOfTheFileBack()
{
    Desk desk;
    desk.open();
    QCOMPARE(sessionStore().frequency, 0);
    desk.enter(u"270"_qs);
    QCOMPARE(store(), QList<int>({270, 252, 1}));
}

void tst_Calibration::escapeBeforeTheFirstEntryLeavesTheFrequencyAtSixtyHertz()
{
    Desk desk;
    desk.open();
    desk.press(Qt::Key_Escape);
    QVERIFY(!desk.dialog.isVisible());
    QCOMPARE(store(), QList<int>({250, 252, 0}));
    QCOMPARE(desk.root.bytes(screenPix), formerFile);
}

void tst_Calibration::escapeReadsNoHalfTypedNumber()
{
    Desk desk;
    desk.open();
    desk.type(u"27"_qs);
    desk.press(Qt::Key_Escape);
    QCoreApplication::processEvents();
    QVERIFY(!desk.dialog.isVisible());
    QCOMPARE(store(), QList<int>({250, 252, 0}));
    QVERIFY(!sessionStore().pitchError);

    desk.open();
    desk.enter(u"270"_qs);
    desk.type(u"1"_qs);
    desk.press(Qt::Key_Escape);
    QCoreApplication::processEvents();
    QVERIFY(!desk.dialog.isVisible());
    QCOMPARE(store(), QList<int>({270, 252, 1}));
    QVERIFY(!sessionStore().pitchError);
    QCOMPARE(desk.root.bytes(screenPix), formerFile);
}

void tst_Calibration::escapeAtTheVerticalLineKeepsTheNewWidthForThisRunOnly()
{
    Desk desk;
    desk.open();
    desk.enter(u"270"_qs);
    desk.press(Qt::Key_Escape);
    QVERIFY(!desk.dialog.isVisible());
    QCOMPARE(sessionStore().horzPixel, 270);
    QCOMPARE(desk.root.bytes(screenPix), formerFile);
}

void tst_Calibration::closingTheWindowIsEscape()
{
    Desk desk;
    desk.open();
    desk.type(u"27"_qs);
    desk.dialog.close();
    QCoreApplication::processEvents();
    QCOMPARE(store(), QList<int>({250, 252, 0}));
    QVERIFY(!sessionStore().pitchError);
}

void tst_Calibration::noOtherKeyCloses()
{
    Desk desk;
    desk.open();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_E, Qt::Key_F1, Qt::Key_Return, Qt::Key_Enter})
        QTest::keyClick(&desk.dialog, key);
    QVERIFY(desk.dialog.isVisible());
    QCOMPARE(desk.shown(), horizontalLine());
}

void tst_Calibration::withoutItsFileTheEntryGoesOnAfterOneWarning()
{
    Desk desk;
    QFile::remove(desk.root.path(screenPix));
    desk.open();
    desk.enter(u"270"_qs);
    const auto told = desk.boxes.take();
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).text, u"Failed to open screen.pix\nNo such file or directory"_qs);
    QCOMPARE(desk.shown(), verticalLine());
    desk.enter(u"160"_qs);
    QCOMPARE(desk.root.bytes(screenPix), QByteArray::fromHex("0000010e 00000140 00000000"));
}

void tst_Calibration::afterManyRoundsAnEntryIsStillReadOnce()
{
    Desk desk;
    for (int round = 0; round < 3; ++round) {
        desk.open();
        desk.press(Qt::Key_Escape);
        desk.open();
        desk.dialog.goCalibration();
    }
    QFile::remove(desk.root.path(screenPix));
    desk.enter(u"270"_qs);
    QCOMPARE(desk.boxes.take().size(), 1);
    QCOMPARE(desk.shown(), verticalLine());
}

void tst_Calibration::aFileThatCannotBeWrittenKeepsTheDialogOpen()
{
    Desk desk;
    desk.open();
    desk.enter(u"270"_qs);
    desk.root.block(screenPix);
    desk.enter(u"160"_qs);
    const auto told = desk.boxes.take();
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).title, u"Error"_qs);
    QVERIFY(told.at(0).text.startsWith(u"Failed to open screen.pix\n"));
    QCOMPARE(desk.boxes.parent(), &desk.dialog);
    QCOMPARE(desk.shown(), verticalLine());
    QVERIFY(!desk.vertical()->hasFocus());
    QCOMPARE(store(), QList<int>({270, 320, 1}));

    desk.root.unblock(screenPix);
    QTest::mouseClick(desk.vertical(), Qt::LeftButton);
    QVERIFY(desk.vertical()->hasFocus());
    desk.press(Qt::Key_Return);
    QVERIFY(!desk.dialog.isVisible());
    QCOMPARE(desk.root.bytes(screenPix), QByteArray::fromHex("0000010e 00000140 00000001"));
}

void tst_Calibration::theVerticalFieldKeepsTheTextOfAFormerRound()
{
    Desk desk;
    desk.open();
    desk.enter(u"270"_qs);
    desk.enter(u"160"_qs);
    desk.open();
    QCOMPARE(desk.horizontal()->text(), QString());
    desk.enter(u"271"_qs);
    QCOMPARE(desk.vertical()->text(), u"160"_qs);
    desk.press(Qt::Key_Return);
    QCOMPARE(store(), QList<int>({271, 320, 1}));
}

void tst_Calibration::leavingAFieldReadsIt()
{
    Desk desk;
    desk.open();
    desk.type(u"270"_qs);
    desk.horizontal()->clearFocus();
    QCOMPARE(sessionStore().horzPixel, 270);
    QCOMPARE(desk.shown(), verticalLine());
}

void tst_Calibration::theSlotsAreSafeToRepeat()
{
    Desk desk;
    desk.open();
    desk.type(u"270"_qs);
    desk.dialog.toLe_horzPitch();
    desk.dialog.toLe_horzPitch();
    QCOMPARE(desk.shown(), verticalLine());
    QCOMPARE(sessionStore().horzPixel, 270);
    desk.type(u"160"_qs);
    desk.dialog.toLe_vertPitch();
    desk.dialog.toLe_vertPitch();
    QVERIFY(!desk.dialog.isVisible());
    QCOMPARE(store(), QList<int>({270, 320, 1}));
}

QTEST_MAIN(tst_Calibration)
#include "tst_Calibration.moc"
