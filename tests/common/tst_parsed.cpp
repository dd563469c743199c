#include "parsed.h"

#include <QLocale>
#include <QTest>

class tst_parsed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void aWholeNumberIsReadInTheLocaleFirstAndThenInPlainC_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");

        const QLocale german(QLocale::German, QLocale::Germany);
        const QLocale english(QLocale::English, QLocale::UnitedStates);
        QTest::newRow("plain") << QLocale::c() << u"270"_qs << 270;
        QTest::newRow("negative") << QLocale::c() << u"-5"_qs << -5;
        QTest::newRow("blanks around it") << QLocale::c() << u" 270 "_qs << 270;
        QTest::newRow("leading zeros are decimal") << QLocale::c() << u"010"_qs << 10;
        QTest::newRow("German groups") << german << u"1.270"_qs << 1270;
        QTest::newRow("German without groups") << german << u"1270"_qs << 1270;
        QTest::newRow("English groups") << english << u"1,270"_qs << 1270;
        QTest::newRow("plain C has no groups") << QLocale::c() << u"1.270"_qs << 0;
        QTest::newRow("a fraction is none") << english << u"27.5"_qs << 0;
        QTest::newRow("letters") << QLocale::c() << u"abc"_qs << 0;
        QTest::newRow("a unit behind it") << QLocale::c() << u"270 mm"_qs << 0;
        QTest::newRow("hexadecimal") << QLocale::c() << u"0x10"_qs << 0;
        QTest::newRow("nothing") << QLocale::c() << QString() << 0;
        QTest::newRow("the greatest") << QLocale::c() << u"2147483647"_qs << 2147483647;
        QTest::newRow("beyond the greatest") << QLocale::c() << u"2147483648"_qs << 0;
    }
    void aWholeNumberIsReadInTheLocaleFirstAndThenInPlainC()
    {
        QFETCH(const QLocale, locale);
        QFETCH(const QString, text);
        QLocale::setDefault(locale);
        QTEST(parsed::toInt(text), "number");
    }

    void aFractionIsReadInTheLocaleFirstAndThenInPlainC_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<float>("number");

        const QLocale german(QLocale::German, QLocale::Germany);
        QTest::newRow("plain") << QLocale::c() << u"1.10"_qs << 1.10F;
        QTest::newRow("German") << german << u"1,10"_qs << 1.10F;
        QTest::newRow("a point in a German session") << german << u"1.10"_qs << 1.10F;
        QTest::newRow("a comma in plain C") << QLocale::c() << u"1,10"_qs << 0.0F;
        QTest::newRow("whole") << german << u"2"_qs << 2.0F;
        QTest::newRow("negative") << german << u"-0,5"_qs << -0.5F;
        QTest::newRow("letters") << german << u"abc"_qs << 0.0F;
        QTest::newRow("nothing") << german << QString() << 0.0F;
    }
    void aFractionIsReadInTheLocaleFirstAndThenInPlainC()
    {
        QFETCH(const QLocale, locale);
        QFETCH(const QString, text);
        QLocale::setDefault(locale);
        QTEST(parsed::toFloat(text), "number");
    }
};

QTEST_GUILESS_MAIN(tst_parsed)
#include "tst_parsed.moc"
