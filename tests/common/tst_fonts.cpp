#include "fonts.h"

#include <QLabel>
#include <QTest>

class tst_fonts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aGroupGetsTheFontOfItsFirstMemberRaised()
    {
        QLabel first;
        QLabel second;
        first.setFont(QFont(u"Arial"_qs, 9));
        second.setFont(QFont(u"Courier New"_qs, 20));
        raiseFonts({&first, &second}, 3);
        for (const QLabel *label : {&first, &second}) {
            QCOMPARE(label->font().family(), u"Arial"_qs);
            QCOMPARE(label->font().pointSize(), 12);
        }
    }

    void aSizeInPixelsIsRaisedFromItsPoints()
    {
        QLabel label;
        QFont font(u"Arial"_qs);
        font.setPixelSize(16);
        label.setFont(font);
        const int points = label.fontInfo().pointSize();
        QVERIFY(points > 0);
        raiseFonts({&label}, 5);
        QCOMPARE(label.font().pointSize(), points + 5);
    }

    void anEmptyGroupIsLeftAlone()
    {
        const QFont before = QApplication::font();
        raiseFonts({}, 3);
        QCOMPARE(QApplication::font(), before);
    }
};

QTEST_MAIN(tst_fonts)
#include "tst_fonts.moc"
