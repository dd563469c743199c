#include "Desk.h"
#include "DrawCross.h"
#include "Preferences.h"
#include "screens.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTranslator>

namespace {

QScreen *large()
{
    return QGuiApplication::screens().constFirst();
}
QScreen *small()
{
    return QGuiApplication::screens().constLast();
}

QLabel *smallScreenNote(const Calibration *dialog)
{
    return dialog->findChild<QLabel *>(QStringLiteral("lbl_smallScreen"));
}

/// The middle of an even size is the first pixel of its second half.
QPoint evenness(const QWidget &window)
{
    return {1 - window.width() % 2, 1 - window.height() % 2};
}

void leaveOutInstructionAndTraining(const Desk &desk)
{
    for (const char *box : {"cb_withInstruction", "cb_withTraining"})
        desk.find<QCheckBox>(QString::fromLatin1(box))->setChecked(false);
}

void addLanguages()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"en", "fr", "de", "it", "es", "nl"})
        QTest::newRow(language) << QString::fromLatin1(language);
}

} // namespace

/// A desk with two screens, one of them smaller than the tests.
class tst_Screens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereAreTwo()
    {
        QCOMPARE(QGuiApplication::screens().size(), 2);
        QCOMPARE(large(), QGuiApplication::primaryScreen());
        QCOMPARE(large()->geometry(), QRect(0, 0, 1920, 1080));
        QCOMPARE(small()->geometry(), QRect(1920, 0, 800, 600));
    }

    void aDialogTakesTheScreenOfItsMainWindow()
    {
        QWidget window;
        QDialog dialog(&window);
        const QDialog ofDialog(&dialog);
        const QWidget alone;
        for (QScreen *screen : {small(), large()}) {
            window.setScreen(screen);
            QCOMPARE(screens::of(window), screen);
            QCOMPARE(screens::of(dialog), screen);
            QCOMPARE(screens::of(ofDialog), screen);
        }
        window.setScreen(small());
        QCOMPARE(screens::of(alone), large());
    }

    void theCalibrationIsMadeWhereTheMainWindowIs()
    {
        Desk desk;
        desk.openWith({});
        for (QScreen *screen : {small(), large()}) {
            desk.window()->setScreen(screen);
            desk.calibration()->goCalibration();
            QCOMPARE(desk.calibration()->geometry(), screen->geometry());
            desk.calibration()->close();
        }
    }

    void theCalibrationTellsThatALineIsLongerThanTheScreen()
    {
        Desk desk;
        desk.openWith({});
        desk.calibration()->goCalibration();
        QVERIFY(!smallScreenNote(desk.calibration())->isVisible());
        desk.calibration()->close();
        desk.window()->setScreen(small());
        desk.calibration()->goCalibration();
        const QLabel *note = smallScreenNote(desk.calibration());
        QVERIFY(note->isVisible());
        QVERIFY(note->text().startsWith(u"This screen is too small: it has 800 by 600 pixels, and "
                                        u"the lines need 1002 by 502."));
        desk.calibration()->resize(1002, 502); // the desktop has been changed meanwhile
        QVERIFY(!note->isVisible());
        desk.calibration()->resize(1001, 502);
        QVERIFY(note->isVisible());
    }

    void thePreferencesTellTheScreenOfTheMainWindow()
    {
        Desk desk;
        desk.openWith({});
        const auto *preferences = desk.window()->findChild<Preferences *>();
        for (QScreen *screen : {small(), large()}) {
            desk.window()->setScreen(screen);
            desk.window()->toPreferences();
            QCOMPARE(
                preferences->findChild<QLineEdit *>(QStringLiteral("le_HorzScreenRes"))->text(),
                QString::number(screen->size().width()));
        }
    }

    void theMainWindowTellsThatATestIsLargerThanItsScreen()
    {
        Desk desk;
        desk.openWith({});
        const QStatusBar *line = desk.window()->statusBar();
        QCOMPARE(line->currentMessage(), QString());
        desk.window()->setScreen(small());
        desk.time.advance(200);
        QCOMPARE(line->currentMessage(),
                 QStringLiteral("This screen has 800 by 600 pixels. The tests need 1024 by 768: "
                                "parts of them are cut off."));
        desk.window()->setScreen(large());
        desk.time.advance(200);
        QCOMPARE(line->currentMessage(), QString());
    }

    void aTestIsRunWhereTheMainWindowIs()
    {
        Desk desk;
        desk.openWith(Desk::patient("Doe"));
        desk.choose(0);
        leaveOutInstructionAndTraining(desk);
        const Test2 *task = desk.test2();
        for (QScreen *screen : {small(), large()}) {
            desk.window()->setScreen(screen);
            desk.click(QStringLiteral("pb_test2"));
            QCOMPARE(task->geometry(), screen->geometry());
            QCOMPARE(QCursor::pos(), task->mapToGlobal(task->rect().center()) + evenness(*task));
            QTest::keyClick(desk.test2(), Qt::Key_Escape);
            desk.time.advance(200);
        }
    }

    void aScreenThatChangesMovesNothingWithinATrial()
    {
        Desk desk;
        desk.openWith(Desk::patient("Doe"));
        desk.choose(0);
        leaveOutInstructionAndTraining(desk);
        desk.click(QStringLiteral("pb_test2"));
        Test2 *task = desk.test2();
        const auto *cross = task->findChild<DrawCross *>();
        QTest::mouseClick(task->findChild<QPushButton *>(QStringLiteral("pb_go")), Qt::LeftButton);
        QCOMPARE(task->stage(), 1);
        const QPoint former = cross->pos();
        task->resize(1024, 768);
        QCOMPARE(cross->pos(), former);
        desk.time.advance(3000); // the target is there
        QCOMPARE(task->stage(), 4);
        QTest::keyClick(task, Qt::Key_Space);
        desk.time.advance(600);
        QCOMPARE(task->stage(), 1);
        QCOMPARE(cross->geometry(), QRect(512 - 20, 384 - 20, 40, 40));
        const auto *mode = task->findChild<QLabel *>(QStringLiteral("lbl_mode"));
        QCOMPARE(mode->geometry().right() + 1, 1024);
        QTest::keyClick(task, Qt::Key_Escape);
        const QByteArray rows = desk.root.bytes(QStringLiteral("Results/output.csv"));
        QCOMPARE(rows.count('\n'), 3); // the header, the trial, the marker
    }

    void whatIsToldFitsItsPlace_data() { addLanguages(); }
    void whatIsToldFitsItsPlace()
    {
        QFETCH(const QString, language);
        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(CATALOGUES "/kelmoran_%1.qm").arg(language)) &&
                QCoreApplication::installTranslator(&translator));
        Desk desk;
        desk.openWith({});
        desk.window()->setScreen(small());
        desk.time.advance(200);
        const QStatusBar *line = desk.window()->statusBar();
        constexpr int margin = 6;
        QVERIFY(line->fontMetrics().horizontalAdvance(line->currentMessage()) + 2 * margin <
                desk.window()->width());
        desk.calibration()->goCalibration();
        const QLabel *note = smallScreenNote(desk.calibration());
        QVERIFY(note->heightForWidth(note->width()) <= note->height());
    }
};

QTEST_MAIN(tst_Screens)
#include "tst_Screens.moc"
