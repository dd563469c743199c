#pragma once

#include "Boxes.h"
#include "DataRoot.h"
#include "Result.h"
#include "SessionStore.h"
#include "VirtualTime.h"
#include "resultFiles.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

/// A desk for one task: a data root with one patient, a clock that stands still, and hands that
/// press what can be seen. Reports are filled but not printed.
template <typename Task>
class TaskDesk
{
public:
    static constexpr char patients[] = "Parameters/patients_list.txt";

    /// @param numbers the last fields of the patient's line: thresholds
    /// @param reportTemplate where the template lies, and a word of it
    TaskDesk(const QByteArray &numbers, const char *reportTemplate, const QByteArray &word)
    {
        resultFiles::createTrialLog();
        writePatient(numbers);
        root.write(QString::fromLatin1(reportTemplate), word);
        SessionStore &store = sessionStore();
        store.patientName = QStringLiteral("Doe Jane 01.02.1950");
        store.gender = QStringLiteral("Mrs.");
        store.lastName = QStringLiteral("Doe");
        store.firstName = QStringLiteral("Jane");
        store.dob = QDate(1950, 2, 1);
        task.result().setPrinting(false);
    }

    /// The patient's line with these last fields: the thresholds, or what a hand has left of them.
    void writePatient(const QByteArray &numbers)
    {
        root.write(QString::fromLatin1(patients),
                   "Mrs.;Doe;Jane;01.02.1950;1;2;3;4;5;6;7;" + numbers + "\r\n");
    }

    template <typename Widget = QPushButton>
    Widget *widget(const char *name)
    {
        Widget *found = task.template findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    bool shown(const char *name) { return widget<QWidget>(name)->isVisible(); }
    QString text(const char *edit) { return widget<QLineEdit>(edit)->text(); }
    /// The text of a label; nothing if it isn't to be seen.
    QString label(const char *name)
    {
        auto *found = widget<QLabel>(name);
        return found->isVisible() ? found->text() : QString();
    }
    QString instruction() { return label("lbl_instruction"); }
    QString mode() { return label("lbl_mode"); }
    QPoint centre() const { return {task.width() / 2, task.height() / 2}; }

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

    /// Goes on until the trial stands in this link; false if it doesn't within 20 seconds.
    bool reach(int stage)
    {
        for (int ms = 0; ms < 20'000; ++ms) {
            if (task.stage() == stage)
                return true;
            time.advance(1);
        }
        return false;
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
    Task task{&window};
};
