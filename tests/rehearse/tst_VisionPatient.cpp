#include "DrawArrowPeriph.h"
#include "DrawGrayRectangle.h"
#include "DrawRectangle.h"
#include "DrawRoundedRectangle.h"
#include "Screen.h"
#include "VirtualTime.h"
#include "VisionPatient.h"

#include <QDialog>
#include <QMap>
#include <QMouseEvent>
#include <QPushButton>
#include <QSet>
#include <QTest>

#include <array>
#include <cmath>
#include <memory>
#include <numbers>

namespace {

constexpr std::array angles{225.0, 180.0, 135.0, 315.0, 0.0, 45.0};
constexpr std::array figureNames{"pb_uniform", "pb_shape", "pb_contrast", "pb_orientation",
                                 "pb_size"};

struct Press
{
    QString button;
    int at = 0; ///< ms since the start
};

/// A task as a patient sees it: figures and triangles, answer buttons, the assessor's button. It
/// notes the presses, and takes the answered half away.
class FakeTask : public QDialog
{
    Q_OBJECT

public:
    FakeTask()
    {
        resize(1400, 1200);
        m_figures = {new DrawRectangle(this), new DrawRoundedRectangle(this),
                     new DrawGrayRectangle(this), new DrawRectangle(this), new DrawRectangle(this)};
        for (QWidget *figure : m_figures)
            figure->resize(56, 62);
        m_figures.at(3)->resize(62, 56);
        m_figures.at(4)->resize(51, 56);
        m_standard->resize(56, 62);
        for (std::size_t i = 0; i < angles.size(); ++i) {
            m_triangles.append(new DrawArrowPeriph(this));
            m_triangles.last()->resize(150, 150);
            put(m_triangles.last(), angles[i], 336.0);
            m_positionButtons.append(newButton(QStringLiteral("pb_pos%1").arg(i)));
            m_positionButtons.last()->resize(82, 82);
            put(m_positionButtons.last(), angles[i], 436.0);
        }
        for (const char *name : figureNames)
            m_figureButtons.append(newButton(QString::fromLatin1(name)));
        next = newButton(QStringLiteral("pb_next"));
        for (QWidget *widget : findChildren<QWidget *>())
            widget->hide();
        show();
    }

    /// A figure of 0 to 4 or -1, beside the standard one, and a turned triangle of 0 to 5 or -1.
    void showStimuli(int figure, int turned)
    {
        if (figure >= 0) {
            m_standard->show();
            m_figures.at(figure)->show();
        }
        for (int i = 0; turned >= 0 && i < int(angles.size()); ++i) {
            m_triangles.at(i)->rotation = angles[std::size_t(i)] + (i == turned ? 180.0 : 0.0);
            m_triangles.at(i)->show();
        }
    }

    void hideStimuli()
    {
        m_standard->hide();
        for (QWidget *figure : qAsConst(m_figures))
            figure->hide();
        for (QWidget *triangle : qAsConst(m_triangles))
            triangle->hide();
    }

    void showButtons(bool figures, bool positions)
    {
        for (QPushButton *button : qAsConst(m_figureButtons))
            button->setVisible(figures && !without.contains(button->objectName()));
        for (QPushButton *button : qAsConst(m_positionButtons))
            button->setVisible(positions && !without.contains(button->objectName()));
    }

    QList<Press> presses;
    QSet<QString> without; ///< buttons that never come
    QPushButton *next = nullptr;
    int clicksAside = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++clicksAside; }

private:
    static int now() { return int(TimeSource::current().nanoseconds() / 1'000'000); }

    void put(QWidget *widget, double angle, double ring) const
    {
        const double radians = angle * std::numbers::pi / 180.0;
        const QPoint at =
            rect().center() + QPoint(int(ring * std::cos(radians)), int(ring * std::sin(radians)));
        widget->move(at - widget->rect().center());
    }

    QPushButton *newButton(const QString &name)
    {
        auto *button = new QPushButton(this);
        button->setObjectName(name);
        connect(button, &QPushButton::clicked, this, [this, button] {
            presses.append({button->objectName(), now()});
            const bool position = m_positionButtons.contains(button);
            for (QPushButton *other : position ? m_positionButtons : m_figureButtons)
                other->hide();
        });
        return button;
    }

    DrawRectangle *m_standard = new DrawRectangle(this);
    QList<QWidget *> m_figures;
    QList<DrawArrowPeriph *> m_triangles;
    QList<QPushButton *> m_figureButtons;
    QList<QPushButton *> m_positionButtons;
};

using Answers = VisionObserver::Answers;

/// Answers after exactly a second, and sees whatever is shown.
VisionObserver steady(Answers answers = Answers::AsSeen)
{
    const VisionObserver::Sight keen{1.0, 100.0, 0.0};
    return {keen, keen, keen, {1000.0, 0.0, 0.0}, answers};
}

/// Answers after a second, and sees nothing.
VisionObserver blind()
{
    const VisionObserver::Sight none{1.0, 1.0, 1.0};
    return {none, none, none, {1000.0, 0.0, 0.0}, Answers::AsSeen};
}

QString positionName(int position)
{
    return QStringLiteral("pb_pos%1").arg(position);
}

} // namespace

class tst_VisionPatient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void whatWasSeenIsAnswered_data();
    void whatWasSeenIsAnswered();
    void theAnswerComesAfterTheAnswerTime();
    void inTheDualTrialTheHalvesComeOneByOneAndInEitherOrder();
    void theExposureIsTheTimeOnTheScreen();
    void theShareOfRightAnswersFollowsTheChanceOfSeeing_data();
    void theShareOfRightAnswersFollowsTheChanceOfSeeing();
    void aGuessIsMadeAmongTheButtonsOnTheScreen_data();
    void aGuessIsMadeAmongTheButtonsOnTheScreen();
    void alwaysRightNeedsNoExposure();
    void alwaysWrongIsNeverRight();
    void aSilentPatientDoesNotAnswer();
    void besideTheAssessorsButtonThePatientOnlyWatches();
    void buttonsThatGoAreNotAnswered();
    void atARepeatedTrialTheAnswerBeginsAnew();
    void anAnswerThatWasToldTakesThePlaceOfTheOwnOne();
    void aToldAnswerBreaksTheSilence();
    void withoutButtonsAToldAnswerIsAClickAside();
    void theSameSeedMakesTheSamePatient();

private:
    void makePatient(const VisionObserver &observer, quint32 seed = 1);
    /// The presses of one trial, exposed for so many ms.
    QList<Press> play(int figure, int turned, int exposure = 200);
    bool playsRight(int figure, int turned, int exposure);

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<FakeTask> m_task;
    std::unique_ptr<Screen> m_screen;
    std::unique_ptr<VisionPatient> m_patient;
};

void tst_VisionPatient::init()
{
    m_time = std::make_unique<VirtualTime>(VirtualTime::Mode::Stepped);
    m_task = std::make_unique<FakeTask>();
    m_screen = std::make_unique<Screen>();
    QApplication::setActiveWindow(m_task.get());
}

void tst_VisionPatient::cleanup()
{
    m_patient.reset();
    m_screen.reset();
    m_task.reset();
    m_time.reset();
}

void tst_VisionPatient::makePatient(const VisionObserver &observer, quint32 seed)
{
    m_patient = std::make_unique<VisionPatient>(observer, seed, *m_screen);
}

QList<Press> tst_VisionPatient::play(int figure, int turned, int exposure)
{
    m_task->presses.clear();
    m_task->showStimuli(figure, turned);
    m_time->advance(exposure);
    m_task->hideStimuli();
    m_time->advance(700);
    m_task->showButtons(figure >= 0, turned >= 0);
    m_time->advance(5000);
    m_task->showButtons(false, false);
    return m_task->presses;
}

bool tst_VisionPatient::playsRight(int figure, int turned, int exposure)
{
    QSet<QString> right;
    if (figure >= 0)
        right.insert(QString::fromLatin1(figureNames.at(std::size_t(figure))));
    if (turned >= 0)
        right.insert(positionName(turned));
    for (const Press &press : play(figure, turned, exposure))
        right.remove(press.button);
    return right.isEmpty();
}

void tst_VisionPatient::whatWasSeenIsAnswered_data()
{
    QTest::addColumn<int>("figure");
    QTest::addColumn<int>("turned");
    for (int figure = 0; figure < 5; ++figure)
        QTest::addRow("figure %d", figure) << figure << -1;
    for (int turned = 0; turned < 6; ++turned)
        QTest::addRow("triangle %d", turned) << -1 << turned;
    for (int i = 0; i < 6; ++i)
        QTest::addRow("figure %d and triangle %d", i % 5, i) << i % 5 << i;
}

void tst_VisionPatient::whatWasSeenIsAnswered()
{
    QFETCH(int, figure);
    QFETCH(int, turned);
    makePatient(steady());
    QVERIFY(playsRight(figure, turned, 200));
    QCOMPARE(m_task->presses.size(), (figure >= 0 ? 1 : 0) + (turned >= 0 ? 1 : 0));
}

void tst_VisionPatient::theAnswerComesAfterTheAnswerTime()
{
    makePatient(steady());
    const auto presses = play(1, -1, 200);
    QCOMPARE(presses.size(), 1);
    QCOMPARE(presses.constFirst().at, 200 + 700 + 1000);
}

void tst_VisionPatient::inTheDualTrialTheHalvesComeOneByOneAndInEitherOrder()
{
    makePatient(steady());
    QMap<bool, int> centralFirst;
    for (int trial = 0; trial < 40; ++trial) {
        const auto presses = play(2, 3);
        QCOMPARE(presses.size(), 2);
        QCOMPARE(presses.at(1).at - presses.at(0).at, 1000);
        const bool central = presses.at(0).button == QStringLiteral("pb_contrast");
        QCOMPARE(presses.at(central ? 1 : 0).button, QStringLiteral("pb_pos3"));
        ++centralFirst[central];
    }
    QVERIFY(centralFirst[true] > 8);
    QVERIFY(centralFirst[false] > 8);
}

void tst_VisionPatient::theExposureIsTheTimeOnTheScreen()
{
    VisionObserver observer = steady();
    observer.central = {100.0, 100.0, 0.0}; // all is seen at 110 ms, and nothing at 90
    makePatient(observer);
    int right = 0;
    for (int trial = 0; trial < 40; ++trial) {
        QVERIFY(playsRight(trial % 5, -1, 110));
        right += playsRight(trial % 5, -1, 90) ? 1 : 0;
    }
    QVERIFY2(right < 20, qPrintable(QString::number(right))); // one in five by chance
}

void tst_VisionPatient::theShareOfRightAnswersFollowsTheChanceOfSeeing_data()
{
    QTest::addColumn<bool>("central");
    QTest::addColumn<bool>("peripheral");
    QTest::addColumn<int>("exposure");
    QTest::addColumn<double>("share");
    // Seen are, with a steepness of 1 and a lapse in ten trials, 0.3 of what is shown for half of
    // the threshold, 0.45 at the threshold and 0.6 at twice of it.
    const auto rows = [](const char *name, bool central, bool peripheral, int threshold,
                         double guessed) {
        const QList<QPair<int, double>> points{
            {threshold / 2, 0.3}, {threshold, 0.45}, {2 * threshold, 0.6}};
        for (const auto &[exposure, seen] : points)
            QTest::addRow("%s, %d ms", name, exposure)
                << central << peripheral << exposure << seen + (1.0 - seen) * guessed;
    };
    rows("central", true, false, 60, 1.0 / 5.0);
    rows("peripheral", false, true, 40, 1.0 / 6.0);
    rows("dual", true, true, 150, 1.0 / 30.0);
}

void tst_VisionPatient::theShareOfRightAnswersFollowsTheChanceOfSeeing()
{
    QFETCH(bool, central);
    QFETCH(bool, peripheral);
    QFETCH(int, exposure);
    QFETCH(double, share);
    VisionObserver observer;
    observer.central = {60.0, 1.0, 0.1};
    observer.peripheral = {40.0, 1.0, 0.1};
    observer.dual = {150.0, 1.0, 0.1};
    makePatient(observer);
    constexpr int trials = 1500;
    int right = 0;
    for (int trial = 0; trial < trials; ++trial)
        right += playsRight(central ? trial % 5 : -1, peripheral ? trial % 6 : -1, exposure);
    const double found = double(right) / trials;
    const double spread = std::sqrt(share * (1.0 - share) / trials);
    QVERIFY2(std::abs(found - share) < 3.0 * spread,
             qPrintable(QStringLiteral("%1, not %2").arg(found).arg(share)));
}

void tst_VisionPatient::aGuessIsMadeAmongTheButtonsOnTheScreen_data()
{
    QTest::addColumn<QStringList>("without");
    QTest::addColumn<bool>("central");
    QTest::addColumn<int>("choices");
    QTest::newRow("all figures") << QStringList() << true << 5;
    QTest::newRow("all places") << QStringList() << false << 6;
    // The answer that would be right is among those that are missing.
    QTest::newRow("three figures")
        << QStringList{QStringLiteral("pb_shape"), QStringLiteral("pb_size")} << true << 3;
    QTest::newRow("five places") << QStringList{QStringLiteral("pb_pos1")} << false << 5;
}

void tst_VisionPatient::aGuessIsMadeAmongTheButtonsOnTheScreen()
{
    QFETCH(QStringList, without);
    QFETCH(bool, central);
    QFETCH(int, choices);
    makePatient(blind());
    m_task->without = QSet<QString>(without.begin(), without.end());
    QMap<QString, int> counts;
    constexpr int each = 200;
    for (int trial = 0; trial < each * choices; ++trial)
        ++counts[play(central ? 1 : -1, central ? -1 : 1).constFirst().button];
    QCOMPARE(counts.size(), choices);
    for (const int count : qAsConst(counts)) // four standard deviations
        QVERIFY2(std::abs(count - each) < 4 * 14, qPrintable(QString::number(count)));
    for (const QString &missing : qAsConst(without))
        QVERIFY(!counts.contains(missing));
}

void tst_VisionPatient::alwaysRightNeedsNoExposure()
{
    VisionObserver observer = blind();
    observer.answers = Answers::AlwaysRight;
    makePatient(observer);
    for (int i = 0; i < 30; ++i)
        QVERIFY(playsRight(i % 5, i % 6, 1));
}

void tst_VisionPatient::alwaysWrongIsNeverRight()
{
    makePatient(steady(Answers::AlwaysWrong));
    for (int i = 0; i < 60; ++i) {
        const auto presses = play(i % 5, i % 6, 4633);
        QCOMPARE(presses.size(), 2);
        for (const Press &press : presses) {
            QVERIFY(press.button != QLatin1String(figureNames.at(std::size_t(i % 5))));
            QVERIFY(press.button != positionName(i % 6));
        }
    }
}

void tst_VisionPatient::aSilentPatientDoesNotAnswer()
{
    makePatient(steady(Answers::Silent));
    QVERIFY(play(1, -1).isEmpty());
    QVERIFY(play(-1, 1).isEmpty());
    QVERIFY(play(1, 1).isEmpty());
}

void tst_VisionPatient::besideTheAssessorsButtonThePatientOnlyWatches()
{
    makePatient(steady());
    m_task->next->show();
    QVERIFY(play(1, -1).isEmpty());
    m_task->next->hide();
    // It may also come a moment behind the answers.
    m_task->showStimuli(1, 2);
    m_time->advance(1000);
    m_task->hideStimuli();
    m_task->showButtons(true, true);
    m_task->next->show();
    m_time->advance(10'000);
    QVERIFY(m_task->presses.isEmpty());
    m_task->next->hide();
    m_task->showButtons(false, false);
    QCOMPARE(play(1, -1).size(), 1);
}

void tst_VisionPatient::buttonsThatGoAreNotAnswered()
{
    makePatient(steady());
    m_task->showStimuli(1, -1);
    m_task->hideStimuli();
    m_task->showButtons(true, false);
    m_time->advance(999);
    m_task->showButtons(false, false);
    m_time->advance(10'000);
    QVERIFY(m_task->presses.isEmpty());
}

void tst_VisionPatient::atARepeatedTrialTheAnswerBeginsAnew()
{
    makePatient(steady());
    m_task->showStimuli(1, 2);
    m_task->hideStimuli();
    m_task->showButtons(true, true);
    m_time->advance(1500);
    QCOMPARE(m_task->presses.size(), 1);
    m_task->showButtons(false, false);
    m_task->next->show();
    m_time->advance(100);
    m_task->next->hide();
    const auto presses = play(3, 4, 200);
    QCOMPARE(presses.size(), 2);
    QCOMPARE(presses.constFirst().at, 1600 + 200 + 700 + 1000);
}

void tst_VisionPatient::anAnswerThatWasToldTakesThePlaceOfTheOwnOne()
{
    makePatient(steady());
    m_task->showStimuli(1, 2);
    m_task->hideStimuli();
    m_task->showButtons(true, true);
    m_patient->answerIn(2500);
    m_time->advance(10'000);
    QCOMPARE(m_task->presses.size(), 2);
    QCOMPARE(m_task->presses.at(0).at, 2500);
    QCOMPARE(m_task->presses.at(1).at, 3500);
    QCOMPARE(m_task->clicksAside, 0);
}

void tst_VisionPatient::aToldAnswerBreaksTheSilence()
{
    makePatient(steady(Answers::Silent));
    m_task->showStimuli(1, 2);
    m_task->hideStimuli();
    m_task->showButtons(true, true);
    m_patient->answerIn(300);
    m_time->advance(10'000);
    QCOMPARE(m_task->presses.size(), 1); // of one half
    QCOMPARE(m_task->presses.at(0).at, 300);
}

void tst_VisionPatient::withoutButtonsAToldAnswerIsAClickAside()
{
    makePatient(steady());
    m_task->showStimuli(1, -1);
    m_patient->answerIn(150);
    m_time->advance(149);
    QCOMPARE(m_task->clicksAside, 0);
    m_time->advance(1);
    QCOMPARE(m_task->clicksAside, 1);
    m_task->hideStimuli();
    m_task->showButtons(true, false);
    m_time->advance(1000);
    QCOMPARE(m_task->presses.size(), 1);
}

void tst_VisionPatient::theSameSeedMakesTheSamePatient()
{
    const auto presses = [this](quint32 seed) {
        QString all;
        makePatient(VisionObserver(), seed);
        for (int trial = 0; trial < 20; ++trial) {
            const int onset = int(TimeSource::current().nanoseconds() / 1'000'000);
            for (const Press &press : play(trial % 5, trial % 6, 150))
                all += press.button + QString::number(press.at - onset);
        }
        return all;
    };
    const QString first = presses(3);
    QCOMPARE(presses(3), first);
    QVERIFY(presses(4) != first);
}

QTEST_MAIN(tst_VisionPatient)
#include "tst_VisionPatient.moc"
