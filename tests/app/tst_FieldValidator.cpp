#include "FieldValidator.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>

class tst_FieldValidator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatWouldBreakARecordIsLeftOut_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("key");

        QTest::newRow("nothing") << QString() << QString() << QString();
        QTest::newRow("a name") << u"O'Brien-Müller"_qs << u"O'Brien-Müller"_qs
                                << u"O'Brien-Müller"_qs;
        QTest::newRow("other letters") << u"Şahin Łukasz Œuvrard 日本 🙂"_qs
                                       << u"Şahin Łukasz Œuvrard 日本 🙂"_qs
                                       << u"Şahin Łukasz Œuvrard 日本 🙂"_qs;
        QTest::newRow("semicolons") << u";a;b;"_qs << u"ab"_qs << u"ab"_qs;
        QTest::newRow("line breaks") << u"a\r\nb\nc\rd"_qs << u"abcd"_qs << u"abcd"_qs;
        QTest::newRow("other line breaks")
            << u"a\u0085b\u2028c\u2029d\v\fe"_qs << u"abcde"_qs << u"abcde"_qs;
        QTest::newRow("control characters")
            << QString(u"a\tb\u0007c\u007fd\u009fe"_qs + QChar(u'\0') + u"f"_qs) << u"abcdef"_qs
            << u"abcdef"_qs;
        QTest::newRow("what no folder may be called")
            << u"a/b\\c:d*e?f\"g<h>i|j"_qs << u"a/b\\c:d*e?f\"g<h>i|j"_qs << u"abcdefghij"_qs;
        QTest::newRow("placeholders and tags' other half")
            << u"%1 &amp; {}"_qs << u"%1 &amp {}"_qs << u"%1 &amp {}"_qs;
        QTest::newRow("blanks stay") << u" a  b "_qs << u" a  b "_qs << u" a  b "_qs;
        QTest::newRow("only what can't stand") << u";\n;"_qs << QString() << QString();
    }
    void whatWouldBreakARecordIsLeftOut()
    {
        QFETCH(const QString, input);
        const FieldValidator text(FieldValidator::Use::Text);
        const FieldValidator key(FieldValidator::Use::Key);
        QString left = input;
        int position = 0;
        QCOMPARE(text.validate(left, position), QValidator::Acceptable);
        QTEST(left, "text");
        left = input;
        QCOMPARE(key.validate(left, position), QValidator::Acceptable);
        QTEST(left, "key");
        QCOMPARE(position, 0);
    }

    void theCursorStaysBehindTheSameLetter_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("after");
        QTest::newRow("at the start") << u";abc"_qs << 0 << 0;
        QTest::newRow("behind what goes") << u"ab;c"_qs << 3 << 2;
        QTest::newRow("in front of what goes") << u"ab;c"_qs << 2 << 2;
        QTest::newRow("at the end") << u";a;b;c;"_qs << 7 << 3;
        QTest::newRow("nothing goes") << u"abc"_qs << 2 << 2;
    }
    void theCursorStaysBehindTheSameLetter()
    {
        QFETCH(QString, input);
        QFETCH(const int, before);
        const FieldValidator validator(FieldValidator::Use::Text);
        int position = before;
        validator.validate(input, position);
        QTEST(position, "after");
    }

    void typedAndPastedTextsAreCleared()
    {
        const FieldValidator validator(FieldValidator::Use::Key);
        QLineEdit edit;
        edit.setValidator(&validator);
        QTest::keyClicks(&edit, u"Mu;st/er"_qs);
        QCOMPARE(edit.text(), u"Muster"_qs);
        edit.setCursorPosition(2);
        QApplication::clipboard()->setText(u"\u0007;Anna\r\n"_qs);
        edit.paste();
        QCOMPARE(edit.text(), u"MuAnnaster"_qs);
        QCOMPARE(edit.cursorPosition(), 6);
        QVERIFY(edit.hasAcceptableInput());
    }
};

QTEST_MAIN(tst_FieldValidator)
#include "tst_FieldValidator.moc"
