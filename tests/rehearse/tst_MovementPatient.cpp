#include "DrawArrow.h"
#include "MovementPatient.h"
#include "PatchBoard.h"
#include "Screen.h"
#include "VirtualTime.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMap>
#include <QPushButton>
#include <QTest>

#include <array>
#include <cmath>
#include <memory>

namespace {

constexpr std::array padNames{"pb_right", "pb_down", "pb_left", "pb_up", "pb_center"};
constexpr std::array padKeys{Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up};

struct Press
{
    QString what; ///< "Space", "key 0" to "key 3", or the name of a button
    int at = 0;   ///< ms since the start
};

int now()
{
    return int(TimeSource::current().nanoseconds() / 1'000'000);
}

/// A task as a patient sees it: the field with its arrow, the pad, the assessor's button. It notes
/// what is pressed; Space takes the field away and an answer the pad.
class FakeTask : public QDialog
{
    Q_OBJECT

public:
    FakeTask()
    {
        resize(1280, 1024);
        m_board->move(640 - 360, 512 - 360);
        m_arrow->setGeometry(640 - 50, 512 - 50, 100, 100);
        for (const char *name : padNames)
            m_pad.append(newButton(QString::fromLatin1(name)));
        next = newButton(QStringLiteral("pb_next"));
        for (QWidget *widget : findChildren<QWidget *>())
            widget->hide();
        connect(&m_drift, &TaskTimer::timeout, this, [this] { m_board->drift(m_step++); });
        show();
    }

    void showField(int place, int direction)
    {
        PatchField field;
        field.ring.fill((direction + 1) % 4);
        field.ring.at(std::size_t(place)) = direction;
        m_board->setField(field);
        m_board->rest();
        m_board->show();
        m_arrow->rotation = 45.0 * place;
        m_arrow->show();
        m_step = 0;
        if (drifts)
            m_drift.start(15);
    }

    void hideField()
    {
        m_drift.stop();
        m_arrow->hide();
        m_board->hide();
    }

    void showPad(bool shown)
    {
        for (QPushButton *button : qAsConst(m_pad))
            button->setVisible(shown);
    }

    QList<Press> presses;
    bool drifts = true;
    bool takesKeys = true;
    QPushButton *next = nullptr;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        const auto key = std::find(padKeys.begin(), padKeys.end(), event->key());
        if (event->key() == Qt::Key_Space) {
            presses.append({QStringLiteral("Space"), now()});
            if (m_arrow->isVisible()) {
                hideField();
                showPad(true);
            }
        } else if (key != padKeys.end()) {
            presses.append({QStringLiteral("key %1").arg(key - padKeys.begin()), now()});
            if (takesKeys)
                showPad(false);
        }
    }

private:
    QPushButton *newButton(const QString &name)
    {
        auto *button = new QPushButton(this);
        button->setObjectName(name);
        button->setFocusPolicy(Qt::NoFocus);
        connect(button, &QPushButton::clicked, this, [this, button] {
            presses.append({button->objectName(), now()});
            showPad(false);
        });
        return button;
    }

    PatchBoard *m_board = new PatchBoard(this);
    DrawArrow *m_arrow = new DrawArrow(this);
    QList<QPushButton *> m_pad;
    TaskTimer m_drift;
    int m_step = 0;
};

using Answer = MovementObserver::Answer;

/// Space after 700 ms, the direction 500 ms later, and no error.
MovementObserver steady(Answer answer = Answer::Keys)
{
    return {{700.0, 0.0, 0.0}, 0.0, 0.0, 0.0, 1.0, {500.0, 0.0, 0.0}, answer};
}

} // namespace

class tst_MovementPatient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theSeenDirectionIsTold_data();
    void theSeenDirectionIsTold();
    void spaceAndAnswerComeAfterTheirTimes();
    void anObliqueArrowCostsItsTime_data();
    void anObliqueArrowCostsItsTime();
    void reactionTimesAreThoseOfTheObserver();
    void aMissedArrowIsAnsweredAfterSixSeconds();
    void whatGoesBeforeTheSecondGlanceIsNotKnown();
    void theShareOfRightDirectionsIsKept();
    void theShareOfUnknownOnesIsKept();
    void whatStandsStillIsNotKnown();
    void aKeyThatDoesNothingIsFollowedByAClick();
    void besideTheAssessorsButtonThePatientOnlyWatches();
    void aPadThatGoesIsNotAnswered();
    void aToldSpaceTakesThePlaceOfTheOwnOne_data();
    void aToldSpaceTakesThePlaceOfTheOwnOne();
    void aToldAnswerTakesThePlaceOfTheOwnOne();
    void withoutAQuestionAToldAnswerIsASpace();
    void theSameSeedMakesTheSamePatient();

private:
    void makePatient(const MovementObserver &observer, quint32 seed = 1);
    /// The presses of one trial.
    QList<Press> play(int place, int direction);
    /// The answer on the pad: 0 to 3, or 4 for "?".
    int answerOf(const QList<Press> &presses) const;

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<FakeTask> m_task;
    std::unique_ptr<Screen> m_screen;
    std::unique_ptr<MovementPatient> m_patient;
};

void tst_MovementPatient::init()
{
    m_time = std::make_unique<VirtualTime>(VirtualTime::Mode::Stepped);
    m_task = std::make_unique<FakeTask>();
    m_screen = std::make_unique<Screen>();
    QApplication::setActiveWindow(m_task.get());
}

void tst_MovementPatient::cleanup()
{
    m_patient.reset();
    m_screen.reset();
    m_task.reset();
    m_time.reset();
}

void tst_MovementPatient::makePatient(const MovementObserver &observer, quint32 seed)
{
    m_patient = std::make_unique<MovementPatient>(observer, seed, *m_screen);
}

QList<Press> tst_MovementPatient::play(int place, int direction)
{
    m_task->presses.clear();
    m_task->showField(place, direction);
    m_time->advance(10'000);
    m_task->hideField();
    m_task->showPad(false);
    return m_task->presses;
}

int tst_MovementPatient::answerOf(const QList<Press> &presses) const
{
    for (int i = 0; i < int(padNames.size()); ++i) {
        if (presses.constLast().what == QLatin1String(padNames.at(std::size_t(i))) ||
            presses.constLast().what == QStringLiteral("key %1").arg(i))
            return i;
    }
    return -1;
}

void tst_MovementPatient::theSeenDirectionIsTold_data()
{
    QTest::addColumn<int>("hand");
    QTest::newRow("by keys") << int(Answer::Keys);
    QTest::newRow("by the mouse") << int(Answer::Mouse);
}

void tst_MovementPatient::theSeenDirectionIsTold()
{
    QFETCH(int, hand);
    makePatient(steady(Answer(hand)));
    for (int place = 0; place < 8; ++place) {
        for (int direction = 0; direction < 4; ++direction) {
            const auto presses = play(place, direction);
            QCOMPARE(presses.size(), 2);
            QCOMPARE(presses.at(0).what, QStringLiteral("Space"));
            QCOMPARE(presses.at(1).what, Answer(hand) == Answer::Keys
                                             ? QStringLiteral("key %1").arg(direction)
                                             : QLatin1String(padNames.at(std::size_t(direction))));
        }
    }
}

void tst_MovementPatient::spaceAndAnswerComeAfterTheirTimes()
{
    makePatient(steady());
    m_time->advance(123);
    const auto presses = play(2, 3);
    QCOMPARE(presses.at(0).at, 123 + 700);
    QCOMPARE(presses.at(1).at, 123 + 700 + 500);
}

void tst_MovementPatient::anObliqueArrowCostsItsTime_data()
{
    QTest::addColumn<double>("cost");
    QTest::newRow("slower") << 150.0;
    QTest::newRow("alike") << 0.0;
    QTest::newRow("faster") << -250.0;
}

void tst_MovementPatient::anObliqueArrowCostsItsTime()
{
    QFETCH(double, cost);
    MovementObserver observer = steady();
    observer.obliqueCost = cost;
    makePatient(observer);
    for (int place = 0; place < 8; ++place) {
        const int start = now();
        QCOMPARE(play(place, 1).at(0).at - start, 700 + (place % 2 == 1 ? int(cost) : 0));
    }
}

void tst_MovementPatient::reactionTimesAreThoseOfTheObserver()
{
    MovementObserver observer = steady();
    observer.reactionTime = {600.0, 50.0, 120.0};
    makePatient(observer);
    constexpr int trials = 1000;
    double sum = 0.0;
    double squares = 0.0;
    for (int trial = 0; trial < trials; ++trial) {
        const int start = now();
        const double time = play(trial % 8, trial % 4).at(0).at - start;
        sum += time;
        squares += time * time;
    }
    const double mean = sum / trials;
    const double spread = std::sqrt(squares / trials - mean * mean);
    // Mean and variance of an ex-Gaussian time are those of its parts, added up.
    QVERIFY2(std::abs(mean - 720.0) < 3.0 * 130.0 / std::sqrt(trials),
             qPrintable(QString::number(mean)));
    QVERIFY2(std::abs(spread - 130.0) < 15.0, qPrintable(QString::number(spread)));
}

void tst_MovementPatient::aMissedArrowIsAnsweredAfterSixSeconds()
{
    MovementObserver observer = steady();
    observer.misses = 0.3;
    makePatient(observer);
    constexpr int trials = 500;
    int missed = 0;
    for (int trial = 0; trial < trials; ++trial) {
        const int start = now();
        const auto presses = play(trial % 8, trial % 4);
        const int time = presses.at(0).at - start;
        QVERIFY(time == 700 || time == 6000);
        QCOMPARE(answerOf(presses), trial % 4); // the movement is seen in the end
        missed += time == 6000 ? 1 : 0;
    }
    QVERIFY2(std::abs(missed - 150) < 3 * 10.3, qPrintable(QString::number(missed)));
}

void tst_MovementPatient::whatGoesBeforeTheSecondGlanceIsNotKnown()
{
    makePatient(steady());
    m_task->showField(1, 2);
    m_time->advance(660); // one glance was made
    m_task->hideField();
    m_task->showPad(true);
    m_time->advance(10'000);
    QCOMPARE(m_task->presses.size(), 1);
    QCOMPARE(m_task->presses.at(0).what, QStringLiteral("pb_center"));
    QCOMPARE(m_task->presses.at(0).at, 660 + 500);
}

void tst_MovementPatient::theShareOfRightDirectionsIsKept()
{
    MovementObserver observer = steady();
    observer.rightDirections = 0.7;
    makePatient(observer);
    constexpr int trials = 1000;
    QMap<int, int> turns;
    for (int trial = 0; trial < trials; ++trial)
        ++turns[(answerOf(play(trial % 8, trial % 4)) + 4 - trial % 4) % 4];
    QVERIFY2(std::abs(turns[0] - 700) < 3 * 14.5, qPrintable(QString::number(turns[0])));
    for (int turn = 1; turn < 4; ++turn) // the others come equally often
        QVERIFY2(std::abs(turns[turn] - 100) < 3 * 9.5, qPrintable(QString::number(turns[turn])));
}

void tst_MovementPatient::theShareOfUnknownOnesIsKept()
{
    for (const Answer hand : {Answer::Keys, Answer::Mouse}) {
        MovementObserver observer = steady(hand);
        observer.unknown = 0.2;
        makePatient(observer);
        constexpr int trials = 500;
        int unknown = 0;
        for (int trial = 0; trial < trials; ++trial) {
            const int answer = answerOf(play(trial % 8, trial % 4));
            QVERIFY(answer == 4 || answer == trial % 4);
            unknown += answer == 4 ? 1 : 0;
        }
        QVERIFY2(std::abs(unknown - 100) < 3 * 9, qPrintable(QString::number(unknown)));
    }
}

void tst_MovementPatient::whatStandsStillIsNotKnown()
{
    makePatient(steady());
    m_task->drifts = false;
    QCOMPARE(answerOf(play(0, 0)), 4);
    m_task->drifts = true;
    QCOMPARE(answerOf(play(0, 0)), 0);
}

void tst_MovementPatient::aKeyThatDoesNothingIsFollowedByAClick()
{
    makePatient(steady());
    m_task->takesKeys = false;
    const auto presses = play(5, 3);
    QCOMPARE(presses.size(), 3);
    QCOMPARE(presses.at(1).what, QStringLiteral("key 3"));
    QCOMPARE(presses.at(2).what, QStringLiteral("pb_up"));
    QCOMPARE(presses.at(2).at, 700 + 500 + 500);
    m_task->takesKeys = true;
    QCOMPARE(play(5, 3).constLast().what, QStringLiteral("key 3")); // and keys are tried again
}

void tst_MovementPatient::besideTheAssessorsButtonThePatientOnlyWatches()
{
    makePatient(steady());
    m_task->next->show();
    QVERIFY(play(3, 0).isEmpty());
    m_task->showPad(true);
    m_time->advance(10'000);
    QVERIFY(m_task->presses.isEmpty());
    m_task->showPad(false);
    m_task->next->hide();
    QCOMPARE(play(3, 0).size(), 2);
}

void tst_MovementPatient::aPadThatGoesIsNotAnswered()
{
    makePatient(steady());
    m_task->showField(0, 0);
    m_time->advance(700 + 499);
    m_task->showPad(false);
    m_time->advance(10'000);
    QCOMPARE(m_task->presses.size(), 1);
}

void tst_MovementPatient::aToldSpaceTakesThePlaceOfTheOwnOne_data()
{
    QTest::addColumn<int>("told");
    QTest::addColumn<bool>("seen");
    QTest::newRow("at once") << 0 << false;
    QTest::newRow("before a second glance") << 40 << false;
    QTest::newRow("early") << 80 << true;
    QTest::newRow("late") << 2500 << true;
    QTest::newRow("very late") << 9000 << true;
}

void tst_MovementPatient::aToldSpaceTakesThePlaceOfTheOwnOne()
{
    QFETCH(int, told);
    QFETCH(bool, seen);
    makePatient(steady());
    m_task->showField(6, 1);
    m_patient->answerIn(told);
    m_time->advance(10'000);
    QCOMPARE(m_task->presses.size(), 2);
    QCOMPARE(m_task->presses.at(0).at, told);
    QCOMPARE(answerOf(m_task->presses), seen ? 1 : 4);
}

void tst_MovementPatient::aToldAnswerTakesThePlaceOfTheOwnOne()
{
    makePatient(steady());
    m_task->showField(6, 1);
    m_time->advance(700);
    m_patient->answerIn(2300);
    m_time->advance(10'000);
    QCOMPARE(m_task->presses.size(), 2);
    QCOMPARE(m_task->presses.at(1).at, 3000);
    QCOMPARE(answerOf(m_task->presses), 1);
}

void tst_MovementPatient::withoutAQuestionAToldAnswerIsASpace()
{
    makePatient(steady());
    m_patient->answerIn(150);
    m_time->advance(149);
    QVERIFY(m_task->presses.isEmpty());
    m_time->advance(1000);
    QCOMPARE(m_task->presses.size(), 1);
    QCOMPARE(m_task->presses.at(0).what, QStringLiteral("Space"));
    QCOMPARE(m_task->presses.at(0).at, 150);
}

void tst_MovementPatient::theSameSeedMakesTheSamePatient()
{
    const auto presses = [this](quint32 seed) {
        QString all;
        makePatient(MovementObserver(), seed);
        for (int trial = 0; trial < 20; ++trial) {
            const int start = now();
            for (const Press &press : play(trial % 8, trial % 4))
                all += press.what + QString::number(press.at - start);
        }
        return all;
    };
    const QString first = presses(3);
    QCOMPARE(presses(3), first);
    QVERIFY(presses(4) != first);
}

QTEST_MAIN(tst_MovementPatient)
#include "tst_MovementPatient.moc"
