#pragma once

#include "DataRoot.h"
#include "DrawArrow.h"
#include "DrawCross.h"
#include "DrawGrayRectangle.h"
#include "DrawRectangle.h"
#include "Result.h"
#include "Test2.h"
#include "TrialRow.h"
#include "VirtualTime.h"
#include "patientsList.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

/// A desk for one attention task: a data root with one patient, a clock that stands still, and
/// hands that press what can be seen. Reports are filled but not printed.
class AttentionDesk
{
public:
    static constexpr char reportTemplate[] = "Languages/En/Kelmoran_Task2_en.html";

    AttentionDesk()
    {
        resultFiles::createTrialLog();
        root.write(QStringLiteral("Parameters/patients_list.txt"),
                   "Mrs.;Doe;Jane;01.02.1950;1;2;3;4;5;6;7;8;9;10\r\n");
        root.write(QString::fromLatin1(reportTemplate), "v_t2a_neutral");
        SessionStore &store = sessionStore();
        store.patientName = QStringLiteral("Doe Jane 01.02.1950");
        store.gender = QStringLiteral("Mrs.");
        store.lastName = QStringLiteral("Doe");
        store.firstName = QStringLiteral("Jane");
        store.dob = QDate(1950, 2, 1);
        store.sessionNb = {1, 3, 3, 4, 5, 6, 7}; // the button has raised its own
        task.result().setPrinting(false);
    }

    void goTest(bool parameters = false, bool fixedDuration = false, int subtask = 0)
    {
        task.goTest2(subtask, false, false, parameters, fixedDuration);
    }

    template <typename Widget = QPushButton>
    Widget *widget(const char *name)
    {
        Widget *found = task.findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    bool shown(const char *name) { return widget<QWidget>(name)->isVisible(); }
    QString text(const char *edit) { return widget<QLineEdit>(edit)->text(); }

    void click(const char *button) { QTest::mouseClick(widget(button), Qt::LeftButton); }
    void key(Qt::Key key) { QTest::keyClick(&task, key); }
    void type(const char *edit, const QString &value)
    {
        auto *line = widget<QLineEdit>(edit);
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, value);
        QTest::keyClick(line, Qt::Key_Return);
    }

    /// Goes on until the trial stands in this link; false if it doesn't within ten seconds.
    bool reach(int stage)
    {
        for (int ms = 0; ms < 10'000; ++ms) {
            if (task.stage() == stage)
                return true;
            time.advance(1);
        }
        return false;
    }
    /// From anywhere in a trial to the start of the next one.
    bool nextTrial()
    {
        for (int ms = 0; ms < 10'000 && task.stage() != 5 && task.stage() != 1; ++ms)
            time.advance(1);
        return reach(1);
    }
    /// A valid trial: the target, this reaction time, and the closing wait.
    bool answer(int reactionTime, int closing = 600)
    {
        if (!reach(4))
            return false;
        time.advance(reactionTime);
        key(Qt::Key_Space);
        time.advance(closing);
        return true;
    }

    /// The rows of a file without its header, split into fields.
    QList<QStringList> rows(const char *file = "Results/output.csv")
    {
        QList<QStringList> result;
        const QString all = QString::fromLatin1(root.bytes(QString::fromLatin1(file)));
        const QStringList lines = all.split(u'\n', Qt::SkipEmptyParts);
        for (qsizetype i = 1; i < lines.size(); ++i)
            result.append(lines[i].split(u';'));
        return result;
    }

    DataRoot root;
    Boxes boxes;
    VirtualTime time{VirtualTime::Mode::Stepped};
    QWidget window;
    Test2 task{&window};
    DrawCross *cross = task.findChild<DrawCross *>();
    DrawArrow *arrow = task.findChild<DrawArrow *>();
    DrawRectangle *target = task.findChild<DrawRectangle *>();
    QLabel *asterisk = task.findChild<QLabel *>(QStringLiteral("lbl_asterisk"));
};
