#include "VisionDesk.h"

#include <QLocale>

#include <algorithm>

using namespace column;

/// The parameter panel: what it shows, and what an edit changes at once.
class tst_Test1Panel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void thePanelIsShownOnRequest();
    void thePanelStaysThroughTheRun();
    void thePanelFollowsTheRun();
    void whatCannotBeTypedIsReadOnly();
    void aTimerTakesBackWhatStandsThere_data();
    void aTimerTakesBackWhatStandsThere();
    void aTypedExposureIsShownInTheNextTrial_data();
    void aTypedExposureIsShownInTheNextTrial();
    void aTypedExposureIsWhereTheStaircaseStarts();
    void aStepLeavesATypedExposure();
    void anExposureTypedInTheFixationIsShownButNotLogged();
    void anExposureOfNoughtOrLessStopsNothing_data();
    void anExposureOfNoughtOrLessStopsNothing();
    void aCycleFollowsItsExposure_data();
    void aCycleFollowsItsExposure();
    void aCycleGoesByTheSubtaskInTraining();
    void aCycleFollowsTheTimeLimitAlone();
    void withoutFixedDurationThereIsNoCycle();
    void figuresFollowTheirEdits_data();
    void figuresFollowTheirEdits();
    void trianglesFollowTheirEdits_data();
    void trianglesFollowTheirEdits();
    void theTurnOfATriangleOutlastsAnEdit();
    void shapeIsTheRadiusOfTheRoundedFigures_data();
    void shapeIsTheRadiusOfTheRoundedFigures();
    void contrastIsTheGreyOfTheGreyFigures_data();
    void contrastIsTheGreyOfTheGreyFigures();
    void aRatioGoesIntoTheTriangles();
    void anOffsetLeavesTheButtonsWhereTheyAre();
    void anEntryIsShownAsItWasUnderstood_data();
    void anEntryIsShownAsItWasUnderstood();
    void aCommaIsReadAndShownInALocaleThatHasOne_data();
    void aCommaIsReadAndShownInALocaleThatHasOne();
    void anEntryThatIsLeftIsTakenLikeOneThatIsEntered();
    void aNumberBelowTheTrialsDoneEndsTheTest_data();
    void aNumberBelowTheTrialsDoneEndsTheTest();
    void aNumberReachedEndsTheTestWithoutResult();
    void unreasonableEntriesBreakNothing_data();
    void unreasonableEntriesBreakNothing();
};

namespace {
struct Entry
{
    const char *name;
    const char *label;
};
constexpr std::array panel{Entry{"number", "Number"},
                           Entry{"timer01", "Timer_01"},
                           Entry{"timer02_S1", "Tim_02_S1"},
                           Entry{"timer02_S2", "Tim_02_S2"},
                           Entry{"timer02_S3", "Tim_02_S3"},
                           Entry{"timer03", "Timer_03 :"},
                           Entry{"timer04", "Timer_04 :"},
                           Entry{"timer05", "Timer_RT"},
                           Entry{"timer06", "Timer_06 :"},
                           Entry{"globSize", "Global Size"},
                           Entry{"shape", "Shape"},
                           Entry{"contrast", "Contrast"},
                           Entry{"orientation", "Orientation"},
                           Entry{"size", "Size"},
                           Entry{"separator", "Separator"},
                           Entry{"triSize", "Tri Size"},
                           Entry{"triRatio", "Tri Ratio"},
                           Entry{"triOffset", "Tri Offset"},
                           Entry{"no", "No :"},
                           Entry{"noS1", "NoS1 :"},
                           Entry{"noS2", "NoS2 :"},
                           Entry{"noS3", "NoS3 :"},
                           Entry{"task", "Task :"},
                           Entry{"subtask", "Subtask :"},
                           Entry{"result", "Result :"},
                           Entry{"horzPitch", "Horz pitch :"},
                           Entry{"vertPitch", "Vert pitch :"},
                           Entry{"timeTc", "Time Cycle :"}};

int countShown(VisionDesk &desk)
{
    return int(std::ranges::count_if(panel, [&desk](const Entry &entry) {
        const QString name = QString::fromLatin1(entry.name);
        return desk.shown(qPrintable(u"le_"_qs + name)) &&
               desk.label(qPrintable(u"lbl_"_qs + name)) == QLatin1String(entry.label);
    }));
}

/// How long the trial stands in this link, ms; -1 if it doesn't come there.
int lasting(VisionDesk &desk, int stage)
{
    if (!desk.reach(stage))
        return -1;
    int ms = 0;
    for (; ms < 20'000 && desk.task.stage() == stage; ++ms)
        desk.time.advance(1);
    return ms;
}

/// How long the stimulus of the next trial is to be seen, ms.
int exposure(VisionDesk &desk)
{
    return lasting(desk, 2);
}

constexpr int trialsColumn = 10; // of the results

using Slot = void (Test1::*)();
} // namespace
Q_DECLARE_METATYPE(Slot)

void tst_Test1Panel::thePanelIsShownOnRequest()
{
    VisionDesk desk;
    for (const bool parameters : {true, false, true}) {
        desk.go({.parameters = parameters});
        QCOMPARE(countShown(desk), parameters ? int(panel.size()) : 0);
        const auto edits = desk.task.findChildren<QLineEdit *>(Qt::FindDirectChildrenOnly);
        QCOMPARE(edits.size(), qsizetype(panel.size()));
        for (const QLineEdit *edit : edits) {
            QCOMPARE(edit->isVisible(), parameters);
            QVERIFY(edit->geometry().bottom() < desk.task.height() / 4); // at the top
        }
        desk.key(Qt::Key_Escape);
    }
}

void tst_Test1Panel::thePanelStaysThroughTheRun()
{
    for (const bool parameters : {true, false}) {
        VisionDesk desk;
        const int expected = parameters ? int(panel.size()) : 0;
        desk.startTest({.mode = 3, .parameters = parameters});
        for (int stage = 1; stage <= 5; ++stage) {
            QVERIFY(desk.reach(stage));
            QCOMPARE(countShown(desk), expected);
        }
        desk.answerRight();
        QCOMPARE(countShown(desk), expected);
    }
}

void tst_Test1Panel::thePanelFollowsTheRun()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true});
    QCOMPARE(desk.text("le_subtask"), QStringLiteral("1"));
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.text("le_result"), QStringLiteral("1"));
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
    QCOMPARE(desk.text("le_noS1"), QStringLiteral("2"));
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("217"));
    QVERIFY(desk.runTrial(false));
    QCOMPARE(desk.text("le_result"), QStringLiteral("0"));
    QCOMPARE(desk.text("le_no"), QStringLiteral("3"));
    QCOMPARE(desk.text("le_noS1"), QStringLiteral("3"));
    QCOMPARE(desk.text("le_noS2"), QStringLiteral("1"));
    QCOMPARE(desk.text("le_noS3"), QStringLiteral("1"));
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("283"));
    QCOMPARE(desk.text("le_timer02_S2"), QStringLiteral("367"));
    QCOMPARE(desk.text("le_timer02_S3"), QStringLiteral("483"));
    desk.key(Qt::Key_Escape);

    desk.writePatient("283;367;483");
    desk.startTest({.parameters = true});
    for (int trial = 0; trial < 3; ++trial) {
        QVERIFY(desk.runTrial(true));
        QCOMPARE(desk.rows().constLast()[RankSub], QStringLiteral("1"));
    }
    for (const char *edit : {"le_noS1", "le_noS2", "le_noS3"})
        QCOMPARE(desk.text(edit), QStringLiteral("2"));
    QCOMPARE(desk.text("le_no"), QStringLiteral("4"));
}

void tst_Test1Panel::whatCannotBeTypedIsReadOnly()
{
    VisionDesk desk;
    desk.go({.mode = 1, .parameters = true});
    for (const char *edit :
         {"le_timer01", "le_timer03", "le_timer04", "le_timer05", "le_timer06"}) {
        QVERIFY2(desk.widget<QLineEdit>(edit)->isReadOnly(), edit);
        const QString before = desk.text(edit);
        desk.type(edit, QStringLiteral("7"));
        QCOMPARE(desk.text(edit), before);
    }
    for (const char *edit : {"le_number", "le_timer02_S1", "le_timer02_S2", "le_timer02_S3",
                             "le_globSize", "le_shape", "le_contrast", "le_orientation", "le_size",
                             "le_separator", "le_triSize", "le_triRatio", "le_triOffset"})
        QVERIFY2(!desk.widget<QLineEdit>(edit)->isReadOnly(), edit);

    desk.click("pb_go"); // and the trial is as it was
    QCOMPARE(lasting(desk, 1), 500);
    QCOMPARE(lasting(desk, 2), 283);
    QCOMPARE(lasting(desk, 3), 200);
    QCOMPARE(lasting(desk, 4), 500);
    desk.answerRight();
    QCOMPARE(lasting(desk, 6), 1000);
}

void tst_Test1Panel::aTimerTakesBackWhatStandsThere_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<Slot>("slot");
    QTest::addColumn<int>("stage"); // that it ends
    QTest::newRow("fixation") << u"le_timer01"_qs << Slot(&Test1::toLe_timer01) << 1;
    QTest::newRow("mask") << u"le_timer03"_qs << Slot(&Test1::toLe_timer03) << 3;
    QTest::newRow("blank") << u"le_timer04"_qs << Slot(&Test1::toLe_timer04) << 4;
    QTest::newRow("rest") << u"le_timer06"_qs << Slot(&Test1::toLe_timer06) << 6;
}

void tst_Test1Panel::aTimerTakesBackWhatStandsThere()
{
    QFETCH(const QString, edit);
    QFETCH(const Slot, slot);
    QFETCH(const int, stage);
    VisionDesk desk;
    desk.go({.mode = 1, .parameters = true});
    auto *line = desk.widget<QLineEdit>(qPrintable(edit));
    const auto measured = [&desk, stage] {
        if (stage == 6) {
            if (!desk.reach(5))
                return -1;
            desk.answerRight();
        }
        return lasting(desk, stage);
    };
    line->setText(QStringLiteral("321"));
    (desk.task.*slot)();
    QCOMPARE(line->text(), QStringLiteral("321"));
    desk.click("pb_go");
    QCOMPARE(measured(), 321);
    desk.key(Qt::Key_Escape);

    desk.writePatient("283;367;483");
    desk.go({.mode = 1, .parameters = true}); // a new run has its default again
    desk.click("pb_go");
    const int standard = stage == 3 ? 200 : stage == 6 ? 1000 : 500;
    QCOMPARE(measured(), standard);
}

void tst_Test1Panel::aTypedExposureIsShownInTheNextTrial_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("edit");
    QTest::newRow("central") << 1 << u"le_timer02_S1"_qs;
    QTest::newRow("peripheral") << 2 << u"le_timer02_S2"_qs;
    QTest::newRow("dual") << 3 << u"le_timer02_S3"_qs;
}

void tst_Test1Panel::aTypedExposureIsShownInTheNextTrial()
{
    QFETCH(const int, mode);
    QFETCH(const QString, edit);
    VisionDesk desk;
    desk.startTest({.mode = mode, .parameters = true});
    QVERIFY(desk.reach(5));
    desk.answerRight();
    desk.type(qPrintable(edit), QStringLiteral("1234"));
    QCOMPARE(desk.task.exposure(Test1::Subtask(mode - 1)), 1234);
    QVERIFY(desk.reach(1));
    QCOMPARE(exposure(desk), 1234);
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().constLast()[Exposure], QStringLiteral("1234"));
}

void tst_Test1Panel::aTypedExposureIsWhereTheStaircaseStarts()
{
    VisionDesk desk;
    desk.go({.mode = 2, .parameters = true});
    desk.type("le_timer02_S2", QStringLiteral("1200"));
    desk.click("pb_go");
    QCOMPARE(exposure(desk), 1200);
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.text("le_timer02_S2"), QStringLiteral("1133")); // below 1500
}

void tst_Test1Panel::aStepLeavesATypedExposure()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true}); // at 283 ms
    desk.type("le_timer02_S1", QStringLiteral("4000"));
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("217")); // the track knows nothing of it
}

void tst_Test1Panel::anExposureTypedInTheFixationIsShownButNotLogged()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true});
    QCOMPARE(desk.task.stage(), 1);
    desk.type("le_timer02_S1", QStringLiteral("50"));
    QCOMPARE(exposure(desk), 50);
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().at(0)[Exposure], QStringLiteral("283")); // as the trial began
}

void tst_Test1Panel::anExposureOfNoughtOrLessStopsNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("nought") << u"0"_qs << u"0"_qs;
    QTest::newRow("letters") << u"abc"_qs << u"0"_qs;
    QTest::newRow("nothing") << QString() << u"0"_qs;
    QTest::newRow("negative") << u"-40"_qs << u"-40"_qs;
    QTest::newRow("a fraction") << u"16.7"_qs << u"0"_qs;
}

void tst_Test1Panel::anExposureOfNoughtOrLessStopsNothing()
{
    QFETCH(const QString, typed);
    VisionDesk desk;
    desk.go({.mode = 1, .parameters = true});
    desk.widget<QLineEdit>("le_timer02_S1")->clear();
    desk.type("le_timer02_S1", typed);
    QTEST(desk.text("le_timer02_S1"), "shown");
    desk.click("pb_go");
    QVERIFY(desk.reach(5));
    desk.seenFigure = 0;
    desk.answerFigure(true);
    QVERIFY(desk.reach(1));
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test1Panel::aCycleFollowsItsExposure_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("cycle"); // 7200 and the exposure; stored are 283, 367 and 483
    QTest::newRow("central") << 1 << u"le_timer02_S1"_qs << u"1000"_qs << u"8200"_qs;
    QTest::newRow("peripheral") << 2 << u"le_timer02_S2"_qs << u"1000"_qs << u"8200"_qs;
    QTest::newRow("dual") << 3 << u"le_timer02_S3"_qs << u"1000"_qs << u"8200"_qs;
    QTest::newRow("another's") << 1 << u"le_timer02_S3"_qs << u"1000"_qs << u"7483"_qs;
    QTest::newRow("the longest of three") << 0 << u"le_timer02_S2"_qs << u"1000"_qs << u"8200"_qs;
    QTest::newRow("not the longest") << 0 << u"le_timer02_S1"_qs << u"400"_qs << u"7683"_qs;
    QTest::newRow("no longer the longest") << 0 << u"le_timer02_S3"_qs << u"17"_qs << u"7567"_qs;
    QTest::newRow("letters") << 1 << u"le_timer02_S1"_qs << u"abc"_qs << u"7200"_qs;
}

void tst_Test1Panel::aCycleFollowsItsExposure()
{
    QFETCH(const int, mode);
    QFETCH(const QString, edit);
    QFETCH(const QString, typed);
    VisionDesk desk;
    desk.go({.mode = mode, .parameters = true, .fixedDuration = true});
    desk.type(qPrintable(edit), typed);
    QTEST(desk.text("le_timeTc"), "cycle");
    QCOMPARE(QString::number(desk.task.calculateTc()), desk.text("le_timeTc"));
}

void tst_Test1Panel::aCycleGoesByTheSubtaskInTraining()
{
    VisionDesk desk;
    desk.go({.training = true, .parameters = true, .fixedDuration = true});
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("8333"));
    desk.type("le_timer02_S2", QStringLiteral("3000")); // the central block is in hand
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("8333"));
    desk.type("le_timer02_S1", QStringLiteral("2000"));
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("9200"));
}

void tst_Test1Panel::aCycleFollowsTheTimeLimitAlone()
{
    VisionDesk desk;
    desk.go({.mode = 1, .parameters = true, .fixedDuration = true});
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("7483"));
    const auto set = [&desk](const char *edit, Slot slot) {
        desk.widget<QLineEdit>(edit)->setText(QStringLiteral("100"));
        (desk.task.*slot)();
    };
    set("le_timer01", &Test1::toLe_timer01);
    set("le_timer03", &Test1::toLe_timer03);
    set("le_timer04", &Test1::toLe_timer04);
    set("le_timer06", &Test1::toLe_timer06);
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("7483")); // not yet
    set("le_timer05", &Test1::toLe_timer05);
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("783"));
    desk.click("pb_go");
    QCOMPARE(lasting(desk, 5), 100); // the limit itself
}

void tst_Test1Panel::withoutFixedDurationThereIsNoCycle()
{
    VisionDesk desk;
    desk.go({.parameters = true});
    QCOMPARE(desk.text("le_timeTc"), QString());
    desk.type("le_timer02_S1", QStringLiteral("1000"));
    desk.widget<QLineEdit>("le_timer05")->setText(QStringLiteral("100"));
    desk.task.toLe_timer05();
    QCOMPARE(desk.text("le_timeTc"), QString());
    desk.click("pb_go");
    QVERIFY(desk.reach(5));
    desk.time.advance(60'000); // and no limit
    QCOMPARE(desk.task.stage(), 5);
}

void tst_Test1Panel::figuresFollowTheirEdits_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QSize>("figure");
    QTest::addColumn<QSize>("small");
    QTest::addColumn<int>("gapHalf");
    // Pixels of 270 micrometres: 52 by 57, small 47 by 52, and 5 from the centre.
    QTest::newRow("width") << u"le_globSize"_qs << u"80"_qs << u"80"_qs << QSize(80, 81)
                           << QSize(67, 74) << 8;
    QTest::newRow("the same width")
        << u"le_globSize"_qs << u"52"_qs << u"52"_qs << QSize(52, 53) << QSize(44, 48) << 5;
    QTest::newRow("orientation") << u"le_orientation"_qs << u"1.5"_qs << u"    1.50"_qs
                                 << QSize(52, 78) << QSize(47, 71) << 5;
    QTest::newRow("size") << u"le_size"_qs << u"0.5"_qs << u"    0.50"_qs << QSize(52, 57)
                          << QSize(26, 29) << 5; // 25.93 and 28.52
    QTest::newRow("separator") << u"le_separator"_qs << u"0.5"_qs << u"    0.50"_qs << QSize(52, 57)
                               << QSize(47, 52) << 13;
    QTest::newRow("separator below nought") << u"le_separator"_qs << u"-0.5"_qs << u"   -0.50"_qs
                                            << QSize(52, 57) << QSize(47, 52) << -13;
    QTest::newRow("width, letters")
        << u"le_globSize"_qs << u"x"_qs << u"0"_qs << QSize(0, 0) << QSize(0, 0) << 0;
    QTest::newRow("separator, letters")
        << u"le_separator"_qs << u"x"_qs << u"    0.00"_qs << QSize(52, 57) << QSize(47, 52) << 0;
}

void tst_Test1Panel::figuresFollowTheirEdits()
{
    QFETCH(const QString, edit);
    QFETCH(const QString, typed);
    QFETCH(const QSize, figure);
    QFETCH(const QSize, small);
    QFETCH(const int, gapHalf);
    VisionDesk desk;
    sessionStore().horzPixel = 270;
    sessionStore().vertPixel = 270;
    desk.go({.parameters = true});
    const QRect triangle = desk.arrows[0]->geometry();
    desk.type(qPrintable(edit), typed);
    QTEST(desk.text(qPrintable(edit)), "shown");

    const QSize turned = figure.transposed();
    const std::array sizes{figure, figure, figure, turned, small};
    for (std::size_t kind = 0; kind < sizes.size(); ++kind) {
        const QSize size = sizes.at(kind);
        const int top = desk.centre().y() - size.height() / 2;
        QCOMPARE(desk.lefts.at(kind)->geometry(),
                 QRect(QPoint(desk.centre().x() - gapHalf - size.width(), top), size));
        QCOMPARE(desk.rights.at(kind)->geometry(),
                 QRect(QPoint(desk.centre().x() + gapHalf, top), size));
    }
    QCOMPARE(desk.arrows[0]->geometry(), triangle);
}

void tst_Test1Panel::trianglesFollowTheirEdits_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("radius");
    // Pixels of 250 by 300 micrometres: 150 by 125.
    QTest::newRow("size") << u"le_triSize"_qs << u"200"_qs << u"200"_qs << QSize(300, 200) << 336;
    QTest::newRow("the same size")
        << u"le_triSize"_qs << u"125"_qs << u"125"_qs << QSize(187, 125) << 336; // 187.5
    QTest::newRow("ratio") << u"le_triRatio"_qs << u"2"_qs << u"    2.00"_qs << QSize(250, 125)
                           << 336;
    QTest::newRow("the same ratio")
        << u"le_triRatio"_qs << u"1.5"_qs << u"    1.50"_qs << QSize(187, 125) << 336;
    QTest::newRow("offset") << u"le_triOffset"_qs << u"100"_qs << u"100"_qs << QSize(150, 125)
                            << 100;
    QTest::newRow("offset below nought")
        << u"le_triOffset"_qs << u"-100"_qs << u"-100"_qs << QSize(150, 125) << -100;
    QTest::newRow("offset, letters")
        << u"le_triOffset"_qs << u"x"_qs << u"0"_qs << QSize(150, 125) << 0;
    QTest::newRow("size, letters") << u"le_triSize"_qs << u"x"_qs << u"0"_qs << QSize(0, 0) << 336;
}

void tst_Test1Panel::trianglesFollowTheirEdits()
{
    QFETCH(const QString, edit);
    QFETCH(const QString, typed);
    QFETCH(const QSize, size);
    QFETCH(const int, radius);
    VisionDesk desk;
    sessionStore().horzPixel = 250;
    sessionStore().vertPixel = 300;
    desk.go({.parameters = true});
    const QRect figure = desk.lefts[0]->geometry();
    desk.type(qPrintable(edit), typed);
    QTEST(desk.text(qPrintable(edit)), "shown");

    const QPoint corner = desk.centre() - QPoint(size.width() / 2, size.height() / 2);
    QCOMPARE(desk.arrows[4]->geometry(), QRect(corner + QPoint(radius, 0), size)); // right
    QCOMPARE(desk.arrows[1]->geometry(), QRect(corner - QPoint(radius, 0), size)); // left
    const double aslant = radius * 0.70710678118654752;
    const QPoint bottomRight(int(corner.x() + aslant), int(corner.y() + aslant));
    QCOMPARE(desk.arrows[5]->geometry(), QRect(bottomRight, size));
    QCOMPARE(desk.lefts[0]->geometry(), figure);
}

void tst_Test1Panel::theTurnOfATriangleOutlastsAnEdit()
{
    VisionDesk desk;
    desk.startTest({.mode = 2, .parameters = true});
    QVERIFY(desk.reach(2));
    const int target = desk.shownTarget();
    QVERIFY(target >= 0);
    desk.type("le_triOffset", QStringLiteral("200"));
    desk.type("le_triSize", QStringLiteral("80"));
    desk.type("le_triRatio", QStringLiteral("1.2"));
    QCOMPARE(desk.shownTarget(), target);
    QCOMPARE(desk.arrows[4]->x(), desk.centre().x() + 200 - desk.arrows[4]->width() / 2);
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.reach(2)); // and the next trial stands where the edits have put it
    QCOMPARE(desk.arrows[4]->x(), desk.centre().x() + 200 - desk.arrows[4]->width() / 2);
    QCOMPARE(desk.arrows[4]->height(), 80);
}

void tst_Test1Panel::shapeIsTheRadiusOfTheRoundedFigures_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<float>("radius");
    QTest::newRow("more") << u"30"_qs << u"   30.00"_qs << 30.0F;
    QTest::newRow("a fraction") << u"12.25"_qs << u"   12.25"_qs << 12.25F;
    QTest::newRow("letters") << u"abc"_qs << u"    0.00"_qs << 0.0F;
}

void tst_Test1Panel::shapeIsTheRadiusOfTheRoundedFigures()
{
    QFETCH(const QString, typed);
    QFETCH(const float, radius);
    VisionDesk desk;
    desk.go({.parameters = true});
    desk.type("le_shape", typed);
    QTEST(desk.text("le_shape"), "shown");
    for (const auto *figure : desk.task.findChildren<DrawRoundedRectangle *>())
        QCOMPARE(figure->radius, radius);
}

void tst_Test1Panel::contrastIsTheGreyOfTheGreyFigures_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("gray");
    QTest::newRow("as it is") << u"0.8"_qs << u"    0.80"_qs << 204;
    QTest::newRow("cut") << u"0.5"_qs << u"    0.50"_qs << 127; // 127.5
    QTest::newRow("white") << u"1"_qs << u"    1.00"_qs << 255;
    QTest::newRow("black") << u"0"_qs << u"    0.00"_qs << 0;
    QTest::newRow("letters") << u"abc"_qs << u"    0.00"_qs << 0;
    QTest::newRow("more than white") << u"2"_qs << u"    2.00"_qs << 510; // painted as white
}

void tst_Test1Panel::contrastIsTheGreyOfTheGreyFigures()
{
    QFETCH(const QString, typed);
    QFETCH(const int, gray);
    VisionDesk desk;
    desk.go({.parameters = true});
    desk.type("le_contrast", typed);
    QTEST(desk.text("le_contrast"), "shown");
    for (const auto *figure : desk.task.findChildren<DrawGrayRectangle *>())
        QCOMPARE(figure->gray, gray);
}

void tst_Test1Panel::aRatioGoesIntoTheTriangles()
{
    VisionDesk desk;
    desk.go({.parameters = true});
    desk.type("le_triRatio", QStringLiteral("2.5"));
    for (const DrawArrowPeriph *arrow : desk.arrows) {
        QCOMPARE(arrow->ratio, 2.5);
        QCOMPARE(arrow->size(), QSize(375, 150));
    }
    desk.type("le_triSize", QStringLiteral("40"));
    for (const DrawArrowPeriph *arrow : desk.arrows) {
        QCOMPARE(arrow->ratio, 2.5);
        QCOMPARE(arrow->size(), QSize(100, 40));
    }
}

void tst_Test1Panel::anOffsetLeavesTheButtonsWhereTheyAre()
{
    VisionDesk desk;
    desk.go({.parameters = true});
    const auto places = [&desk] {
        QList<QRect> result;
        for (const char *button : VisionDesk::positionButtons)
            result.append(desk.widget(button)->geometry());
        for (const char *button : VisionDesk::figureButtons)
            result.append(desk.widget(button)->geometry());
        return result;
    };
    const QList<QRect> before = places();
    QCOMPARE(before[4].topLeft(), desk.centre() + QPoint(436 - 41, -41));
    for (const char *edit : {"le_triOffset", "le_triSize", "le_globSize"})
        desk.type(edit, QStringLiteral("90"));
    QCOMPARE(places(), before);
}

void tst_Test1Panel::anEntryIsShownAsItWasUnderstood_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    for (const char *edit : {"le_number", "le_timer02_S1", "le_timer02_S2", "le_timer02_S3",
                             "le_globSize", "le_triSize", "le_triOffset"}) {
        const QString name = QString::fromLatin1(edit);
        QTest::addRow("%s, a number", edit) << name << u"12"_qs << u"12"_qs;
        QTest::addRow("%s, leading zeros", edit) << name << u"012"_qs << u"12"_qs;
        QTest::addRow("%s, a fraction", edit) << name << u"1.5"_qs << u"0"_qs;
        QTest::addRow("%s, letters", edit) << name << u"abc"_qs << u"0"_qs;
    }
    for (const char *edit :
         {"le_shape", "le_contrast", "le_orientation", "le_size", "le_separator", "le_triRatio"}) {
        const QString name = QString::fromLatin1(edit);
        QTest::addRow("%s, a number", edit) << name << u"1.25"_qs << u"    1.25"_qs;
        QTest::addRow("%s, whole", edit) << name << u"2"_qs << u"    2.00"_qs;
        QTest::addRow("%s, letters", edit) << name << u"abc"_qs << u"    0.00"_qs;
        QTest::addRow("%s, a comma", edit) << name << u"1,25"_qs << u"    0.00"_qs;
    }
}

void tst_Test1Panel::anEntryIsShownAsItWasUnderstood()
{
    QFETCH(const QString, edit);
    QFETCH(const QString, typed);
    VisionDesk desk;
    desk.go({.parameters = true});
    desk.type(qPrintable(edit), typed);
    QTEST(desk.text(qPrintable(edit)), "shown");
}

void tst_Test1Panel::aCommaIsReadAndShownInALocaleThatHasOne_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("comma") << u"1,50"_qs;
    QTest::newRow("point") << u"1.50"_qs;
}

void tst_Test1Panel::aCommaIsReadAndShownInALocaleThatHasOne()
{
    QFETCH(const QString, typed);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    VisionDesk desk;
    desk.go({.parameters = true});
    QCOMPARE(desk.text("le_horzPitch"), QStringLiteral("   0,250"));
    QCOMPARE(desk.text("le_shape"), QStringLiteral("   15,00"));
    QCOMPARE(desk.text("le_orientation"), QStringLiteral("    1,10"));
    QCOMPARE(desk.text("le_triOffset"), QStringLiteral("336"));

    desk.type("le_orientation", typed);
    QCOMPARE(desk.text("le_orientation"), QStringLiteral("    1,50"));
    QCOMPARE(desk.lefts[0]->size(), QSize(56, 84));
    // What stands there is understood again when the cursor only passes by.
    desk.task.toLe_orientation();
    QCOMPARE(desk.text("le_orientation"), QStringLiteral("    1,50"));
    QCOMPARE(desk.lefts[0]->size(), QSize(56, 84));
    desk.type("le_contrast", QStringLiteral("0,5"));
    for (const auto *figure : desk.task.findChildren<DrawGrayRectangle *>())
        QCOMPARE(figure->gray, 127);
}

void tst_Test1Panel::anEntryThatIsLeftIsTakenLikeOneThatIsEntered()
{
    VisionDesk desk;
    desk.go({.parameters = true});
    QCoreApplication::processEvents(); // the window becomes the active one
    auto *width = desk.widget<QLineEdit>("le_globSize");
    width->setFocus();
    width->selectAll();
    QTest::keyClicks(width, QStringLiteral("80"));
    QCOMPARE(desk.lefts[0]->width(), 56);
    desk.widget<QLineEdit>("le_shape")->setFocus();
    QCOMPARE(desk.lefts[0]->size(), QSize(80, 88));
    QCOMPARE(desk.text("le_globSize"), QStringLiteral("80"));
}

void tst_Test1Panel::aNumberBelowTheTrialsDoneEndsTheTest_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("below") << u"2"_qs;
    QTest::newRow("equal") << u"4"_qs;
    QTest::newRow("the running one") << u"5"_qs;
    QTest::newRow("nought") << u"0"_qs;
    QTest::newRow("letters") << u"abc"_qs;
    QTest::newRow("negative") << u"-1"_qs;
}

void tst_Test1Panel::aNumberBelowTheTrialsDoneEndsTheTest()
{
    QFETCH(const QString, typed);
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true}); // 283, 217, 150, 117, 83
    for (int trial = 0; trial < 4; ++trial)
        QVERIFY(desk.runTrial(true));
    desk.type("le_number", typed);
    QVERIFY(!desk.shown("pb_results"));
    QCOMPARE(desk.task.stage(), 1); // the trial goes on
    QVERIFY(desk.runTrial(true));

    QVERIFY(desk.shown("pb_results") && desk.shown("pb_mainMenu"));
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(desk.rows().size(), 5);
    QCOMPARE(desk.rows("Results/valid-output.csv").size(), 5);
    const auto results = desk.rows("Results/results_T1.csv");
    QCOMPARE(results.size(), 1);
    QCOMPARE(results[0][trialsColumn], QStringLiteral("0"));
    // The exposure of the moment, without a turning point: 83 ms were shown, 67 come next.
    QCOMPARE(results[0].mid(11, 7).join(u';'), QStringLiteral("67;0;0;0.000000;0;0.000000;0"));
    QCOMPARE(desk.thresholds(), QStringLiteral("67;367;483"));
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Test1Panel::aNumberReachedEndsTheTestWithoutResult()
{
    VisionDesk desk;
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("3"));
    desk.click("pb_go");
    for (int trial = 0; trial < 3; ++trial) {
        QVERIFY(!desk.shown("pb_results"));
        QVERIFY(desk.runTrial(false));
    }
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(desk.rows("Results/results_T1.csv").at(0)[trialsColumn], QStringLiteral("0"));
    QCOMPARE(desk.thresholds(), QStringLiteral("367;483;650")); // one step up each
}

void tst_Test1Panel::unreasonableEntriesBreakNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("the greatest number") << u"2147483647"_qs;
    QTest::newRow("the least number") << u"-2147483648"_qs;
    QTest::newRow("beyond any number") << u"99999999999999999999"_qs;
    QTest::newRow("beyond any fraction") << u"1e39"_qs;
    QTest::newRow("not a number") << u"nan"_qs;
    QTest::newRow("boundless") << u"inf"_qs;
    QTest::newRow("negative") << u"-3"_qs;
    QTest::newRow("next to nothing") << u"1e-38"_qs;
}

void tst_Test1Panel::unreasonableEntriesBreakNothing()
{
    QFETCH(const QString, typed);
    VisionDesk desk;
    desk.startTest({.mode = 3, .parameters = true});
    for (const char *edit : {"le_globSize", "le_shape", "le_contrast", "le_orientation", "le_size",
                             "le_separator", "le_triSize", "le_triRatio", "le_triOffset"})
        desk.type(edit, typed);
    QVERIFY(desk.reach(2));
    desk.task.grab(); // all of it is painted
    desk.look();
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().size(), 1);
    QCOMPARE(desk.rows().at(0)[Error], QStringLiteral("0"));
}

QTEST_MAIN(tst_Test1Panel)
#include "tst_Test1Panel.moc"
