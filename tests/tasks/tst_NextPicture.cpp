#include "NextPicture.h"

#include <QScreen>
#include <QTest>
#include <QWidget>

namespace {
/// A window with two squares, and what of it has been drawn: the offscreen platform takes the store
/// itself for the screen.
class Scene : public QWidget
{
public:
    Scene()
    {
        setGeometry(0, 0, 200, 100);
        setStyleSheet(QStringLiteral("background-color: black"));
        for (QWidget *square : {&left, &right}) {
            square->setStyleSheet(QStringLiteral("background-color: white"));
            square->hide();
        }
        left.setGeometry(10, 10, 30, 30);
        right.setGeometry(150, 60, 30, 30);
        show();
    }

    QColor drawn(QPoint at) const
    {
        const QPixmap picture = screen()->grabWindow(winId(), at.x(), at.y(), 1, 1);
        return picture.toImage().pixelColor(0, 0);
    }

    QWidget left{this};
    QWidget right{this};
};

constexpr QPoint inLeft(20, 20);
constexpr QPoint inRight(160, 70);
} // namespace

class tst_NextPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatWasShownIsDrawnBeforeTheToolkitDoesIt();
    void whatIsHiddenAndWhatIsShownChangeTogether();
    void whatMovesIsGoneFromItsPlace();
    void aPictureWithoutAChangePutsNothing();
    void theToolkitFindsNothingElseToPaint();
};

void tst_NextPicture::whatWasShownIsDrawnBeforeTheToolkitDoesIt()
{
    Scene scene;
    QVERIFY(QTest::qWaitForWindowExposed(&scene));
    NextPicture picture(scene);
    scene.left.show();
    QCOMPARE(scene.drawn(inLeft), QColor(Qt::black));
    picture.draw();
    picture.put();
    QCOMPARE(scene.drawn(inLeft), QColor(Qt::white));
}

void tst_NextPicture::whatIsHiddenAndWhatIsShownChangeTogether()
{
    Scene scene;
    QVERIFY(QTest::qWaitForWindowExposed(&scene));
    NextPicture picture(scene);
    scene.left.show();
    picture.draw();
    picture.put();
    scene.left.hide();
    scene.right.show();
    picture.draw();
    picture.put();
    QCOMPARE(scene.drawn(inLeft), QColor(Qt::black));
    QCOMPARE(scene.drawn(inRight), QColor(Qt::white));
}

void tst_NextPicture::whatMovesIsGoneFromItsPlace()
{
    Scene scene;
    QVERIFY(QTest::qWaitForWindowExposed(&scene));
    NextPicture picture(scene);
    scene.left.show();
    picture.draw();
    picture.put();
    scene.left.move(150, 60);
    picture.draw();
    picture.put();
    QCOMPARE(scene.drawn(inLeft), QColor(Qt::black));
    QCOMPARE(scene.drawn(inRight), QColor(Qt::white));
}

void tst_NextPicture::aPictureWithoutAChangePutsNothing()
{
    Scene scene;
    QVERIFY(QTest::qWaitForWindowExposed(&scene));
    NextPicture picture(scene);
    picture.draw();
    picture.put();
    QCOMPARE(scene.drawn(inLeft), QColor(Qt::black));
    QCOMPARE(scene.drawn(inRight), QColor(Qt::black));
}

void tst_NextPicture::theToolkitFindsNothingElseToPaint()
{
    Scene scene;
    QVERIFY(QTest::qWaitForWindowExposed(&scene));
    NextPicture picture(scene);
    scene.left.show();
    scene.right.show();
    picture.draw();
    picture.put();
    const QImage ahead = scene.screen()->grabWindow(scene.winId()).toImage();
    QCoreApplication::processEvents();
    QCOMPARE(scene.screen()->grabWindow(scene.winId()).toImage(), ahead);
}

QTEST_MAIN(tst_NextPicture)
#include "tst_NextPicture.moc"
