#include "AttentionDesk.h"
#include "MemoryDesk.h"
#include "MovementDesk.h"
#include "VisionDesk.h"
#include "screenFile.h"

#include <QGuiApplication>
#include <QImage>
#include <QScreen>

#include <cmath>

namespace {

constexpr double pixel = 0.2;  // mm: how large the screen's own pixels are, whatever the scaling
constexpr int halfLight = 100; // of 255

/// The screen's pixels in one of the toolkit's.
double scaling()
{
    return QGuiApplication::primaryScreen()->devicePixelRatio();
}

/// A length of the toolkit's pixels is whole in them: it is half of one off at most, and its edges
/// may fall between the screen's.
double tolerance()
{
    return 0.5 * scaling() + 0.5;
}

/// What a window shows, in the screen's own pixels.
class Seen
{
public:
    explicit Seen(QWidget &window)
        : m_picture(window.grab().toImage().convertToFormat(QImage::Format_Grayscale8))
    {
    }

    QSize size() const { return m_picture.size(); }

    /// What is lit in a part of the window, which is told in the toolkit's pixels.
    QRect lit(const QRectF &part) const
    {
        const QRect within =
            m_picture.rect() &
            QRectF(part.topLeft() * scaling(), part.size() * scaling()).toAlignedRect();
        QRect found;
        for (int y = within.top(); y <= within.bottom(); ++y) {
            const uchar *line = m_picture.constScanLine(y);
            for (int x = within.left(); x <= within.right(); ++x) {
                if (line[x] >= halfLight)
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    }
    QRect litAround(const QPointF &middle, double half) const
    {
        return lit({middle - QPointF(half, half), QSizeF(2 * half, 2 * half)});
    }

private:
    QImage m_picture;
};

#define COMPARE_WITHIN(seen, told, most)                                                           \
    QVERIFY2(std::abs((seen) - (told)) <= (most),                                                  \
             qPrintable(QStringLiteral("%1 pixels of the screen, not %2").arg(seen).arg(told)))
#define COMPARE_LENGTH(seen, told) COMPARE_WITHIN(seen, told, tolerance())
/// For what is cut to whole pixels rather than rounded, at both its ends.
#define COMPARE_CUT(seen, told) COMPARE_WITHIN(seen, told, tolerance() + scaling())

/// Somebody with a ruler: measures both lines on the screen and types what they are long.
struct Ruler
{
    Calibration dialog;
    double across = 0; ///< the horizontal line with its marks, the screen's pixels
    double up = 0;     ///< the vertical one

    Ruler()
    {
        screenFile::write(); // as the main window does in front of the first calibration
        dialog.goCalibration();
        const QPointF middle = QPointF(dialog.width(), dialog.height()) / 2;
        across = Seen(dialog).lit({middle - QPointF(550, 12), QSizeF(1100, 24)}).width();
        enter("le_horzPitch", across - scaling()); // the marks reach a pixel beyond the line
        up = Seen(dialog).lit({middle - QPointF(12, 258), QSizeF(24, 520)}).height();
        enter("le_vertPitch", up);
    }

private:
    void enter(const char *name, double length)
    {
        auto *edit = dialog.findChild<QLineEdit *>(QString::fromLatin1(name));
        edit->setText(QString::number(std::lround(length * pixel)));
        Q_EMIT edit->editingFinished();
    }
};

/// What of the visual perception task is measured in millimetres, in the row of its instruction.
struct Kind
{
    double width;
    double height;
};
constexpr double figure = 14;
constexpr std::array<Kind, 5> kinds{{{figure, 1.1 * figure},
                                     {figure, 1.1 * figure},
                                     {figure, 1.1 * figure},
                                     {1.1 * figure, figure},
                                     {0.91 * figure, 0.91 * 1.1 * figure}}};

} // namespace

/// A length that is told in millimetres has them, and one that is told in pixels has as many of the
/// calibration's, at the scaling of the desktop that QT_SCALE_FACTOR asks for: this program is run
/// once for each.
class tst_Scaling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theScalingIsTheOneAskedFor()
    {
        QCOMPARE(scaling(),
                 qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble());
    }

    void theLinesHaveTheirPixelsAndTheRulerFindsThem()
    {
        const DataRoot root;
        const Boxes boxes;
        const Ruler ruler;
        COMPARE_LENGTH(ruler.across, 1001 * scaling());
        COMPARE_LENGTH(ruler.up, 500 * scaling());
        const int micrometres = int(std::lround(1000 * pixel * scaling()));
        QVERIFY(std::abs(sessionStore().horzPixel - micrometres) <= 1);
        QVERIFY(std::abs(sessionStore().vertPixel - micrometres) <= 2);
        QVERIFY(!ruler.dialog.findChild<QLabel *>(QStringLiteral("lbl_smallScreen"))->isVisible());
    }

    void theFiguresHaveTheirMillimetres()
    {
        VisionDesk desk;
        const Ruler ruler;
        desk.go({.mode = 1, .instruction = true});
        for (int step = 0; step < 5 && !desk.lefts[0]->isVisible(); ++step)
            desk.click("pb_next");
        const Seen seen(desk.task);
        for (int kind = 0; kind < int(kinds.size()); ++kind) {
            constexpr double step = 100;
            constexpr double above = 20;
            const QRect one = seen.lit({desk.centre().x() + (kind - 2.5) * step,
                                        desk.centre().y() - above - step, step, step});
            const Kind &told = kinds.at(std::size_t(kind));
            COMPARE_LENGTH(one.width(), told.width / pixel);
            COMPARE_LENGTH(one.height(), told.height / pixel);
        }
    }

    void theArrowsHaveTheirMillimetresAndTheirRing()
    {
        constexpr int ring = 336;
        constexpr double length = 37.5; // mm
        VisionDesk desk;
        const Ruler ruler;
        desk.go({.mode = 2, .instruction = true});
        for (int step = 0; step < 5 && desk.shownTarget() < 0; ++step)
            desk.click("pb_next");
        const Seen seen(desk.task);
        const QPointF right = desk.centre() + QPointF(ring, 0);
        const QRect one = seen.litAround(right, length / pixel / scaling() / 2 + 8);
        // The outline of an arrow is a pixel wide, of the toolkit's.
        COMPARE_CUT(one.width(), length / pixel + scaling());
        COMPARE_CUT(one.height(), 25 / pixel + scaling());
        COMPARE_LENGTH(one.left() + one.width() / 2.0, right.x() * scaling());
        COMPARE_LENGTH(one.top() + one.height() / 2.0, right.y() * scaling());
    }

    void theTargetsStandOnTheirRing()
    {
        AttentionDesk desk;
        desk.goTest();
        desk.click("pb_go");
        for (int trial = 0; trial < 3; ++trial) {
            QVERIFY(desk.reach(4));
            const QPointF place = QRectF(desk.target->geometry()).center();
            const QRect one = Seen(desk.task).litAround(place, 30);
            COMPARE_LENGTH(one.width(), 20 * scaling());
            COMPARE_LENGTH(one.height(), 20 * scaling());
            const QPointF off = QRectF(one).center() - QPointF(desk.centre()) * scaling();
            COMPARE_CUT(std::hypot(off.x(), off.y()), 250 * scaling());
            QVERIFY(desk.answer(300));
        }
    }

    void thePatchesHaveTheirPlaces()
    {
        MovementDesk desk;
        desk.startTest();
        const Seen seen(desk.task);
        for (int column = -4; column <= 4; ++column) {
            constexpr int grid = 84;
            if (column == 0)
                continue;
            const QPointF place = desk.centre() + QPointF(column * grid, 0);
            const QRect one = seen.litAround(place, grid / 2.0 - 1);
            COMPARE_LENGTH(one.width(), 42 * scaling());
            COMPARE_LENGTH(one.height(), 42 * scaling());
            COMPARE_LENGTH(one.left() + one.width() / 2.0, place.x() * scaling());
        }
    }

    void aCrossIsFoundAgainWhereItStood()
    {
        MemoryDesk desk;
        desk.setPitch(int(1000 * pixel * scaling()), int(1000 * pixel * scaling()));
        desk.startTest();
        QVERIFY(desk.reach(2));
        const QPointF place = MemoryDesk::place(desk.first);
        const QRect one = Seen(desk.task).litAround(place, 30);
        COMPARE_LENGTH(one.width(), 40 * scaling());
        COMPARE_LENGTH(one.height(), 40 * scaling());
        const QPointF middle = QRectF(one).center() / scaling();
        const QList<QPoint> crosses = desk.runToQuestion();
        QVERIFY(crosses.size() >= 2);
        desk.answer(crosses.last(), middle.toPoint());
        desk.time.advance(2000);
        const QStringList row = desk.rows().constFirst();
        QCOMPARE(row.at(column::DistFirst).trimmed(), QStringLiteral("1.00")); // no less is told
        QCOMPARE(row.at(column::DistLast).trimmed(), QStringLiteral("1.00"));
    }

    void anAnswerBeginsAtTheMiddleOfTheScreen()
    {
        VisionDesk desk;
        desk.startTest({});
        QVERIFY(desk.reach(5));
        QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(desk.centre()));
        const QSize whole = QGuiApplication::primaryScreen()->size();
        QCOMPARE(desk.centre(), QPoint(whole.width() / 2, whole.height() / 2));
    }

    void theWholeScreenIsTaken()
    {
        MemoryDesk desk;
        desk.startTest();
        QCOMPARE(Seen(desk.task).size(),
                 (QSizeF(QGuiApplication::primaryScreen()->size()) * scaling()).toSize());
    }
};

QTEST_MAIN(tst_Scaling)
#include "tst_Scaling.moc"
