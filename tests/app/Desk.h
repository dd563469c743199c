#pragma once

#include "Calibration.h"
#include "DataRoot.h"
#include "Kelmoran.h"
#include "Result.h"
#include "Test2.h"
#include "VirtualTime.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <functional>
#include <memory>

/// The main window in a data root of its own, with a clock that the test moves.
class Desk
{
public:
    Desk() = default;

    /// The program starts on what lies in the data root now.
    void open()
    {
        m_window = std::make_unique<Kelmoran>();
        m_window->show();
    }

    template <typename Widget>
    Widget *find(const QString &name) const
    {
        Widget *found = m_window->findChild<Widget *>(name);
        if (found == nullptr)
            qFatal("no %s", qPrintable(name));
        return found;
    }

    QComboBox *patients() const { return find<QComboBox>(QStringLiteral("cob_patientName")); }
    QStringList patientNames() const
    {
        QStringList names;
        for (int i = 0; i < patients()->count(); ++i)
            names.append(patients()->itemText(i));
        return names;
    }
    QLineEdit *session(int number) const
    {
        return find<QLineEdit>(QStringLiteral("le_session%1").arg(number));
    }
    QStringList sessions() const
    {
        QStringList numbers;
        for (int i = 1; i <= 7; ++i)
            numbers.append(session(i)->text());
        return numbers;
    }
    QString label(const QString &name) const { return find<QLabel>(name)->text(); }
    bool isEnabled(const QString &name) const
    {
        if (name.startsWith(u"action"))
            return find<QAction>(name)->isEnabled();
        return find<QWidget>(name)->isEnabled();
    }
    Calibration *calibration() const
    {
        return m_window->findChild<Calibration *>(QString(), Qt::FindDirectChildrenOnly);
    }
    Test2 *test2() const { return m_window->findChild<Test2 *>(); }
    Kelmoran *window() const { return m_window.get(); }

    /// A calibrated screen and these patients, half a second after the start.
    void openWith(const QByteArray &list)
    {
        root.write(QStringLiteral("Parameters/screen.pix"), calibrated());
        root.write(listFile(), list);
        open();
        time.advance(500);
    }

    /// As the assessor does: opens the box and clicks the item.
    void choose(int index) const
    {
        patients()->setCurrentIndex(index);
        Q_EMIT patients()->activated(index);
    }
    void click(const QString &button) const
    {
        QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
    }
    /// An attention test of one trial, to its end, with a report that is not printed.
    /// @param once what happens as soon as it has begun
    void playTest(const std::function<void()> &once = [] {})
    {
        test2()->result().setPrinting(false);
        find<QCheckBox>(QStringLiteral("cb_withInstruction"))->setChecked(false);
        find<QCheckBox>(QStringLiteral("cb_withTraining"))->setChecked(false);
        find<QCheckBox>(QStringLiteral("cb_parameters"))->setChecked(true);
        click(QStringLiteral("pb_test2"));
        once();
        auto *number = test2()->findChild<QLineEdit *>(QStringLiteral("le_number"));
        number->setText(QStringLiteral("1"));
        QTest::keyClick(number, Qt::Key_Return);
        clickInTest(QStringLiteral("pb_go"));
        QVERIFY(reachTarget());
        time.advance(300);
        QTest::keyClick(test2(), Qt::Key_Space);
        time.advance(600);
        QVERIFY(test2()->findChild<QPushButton *>(QStringLiteral("pb_mainMenu"))->isVisible());
        clickInTest(QStringLiteral("pb_mainMenu"));
        QVERIFY(!test2()->isRunning());
    }
    /// What the registration dialog leaves when it closes.
    static void leaveNewPatient(const QString &lastName, const QString &firstName)
    {
        SessionStore &store = sessionStore();
        store.gender = QStringLiteral("Mrs.");
        store.lastName = lastName;
        store.firstName = firstName;
        store.dob = QDate(1950, 3, 2);
        store.newPatient = true;
    }

    /// What a choice of a patient opens.
    static QStringList tests()
    {
        QStringList names{
            QStringLiteral("cb_withInstruction"), QStringLiteral("cb_withTraining"),
            QStringLiteral("cb_fixedDuration"),   QStringLiteral("cb_parameters"),
            QStringLiteral("cb_subTask"),         QStringLiteral("actionPrevious_reports")};
        for (int i = 1; i <= 7; ++i)
            names << QStringLiteral("pb_test%1").arg(i) << QStringLiteral("le_session%1").arg(i);
        return names;
    }

    static QString listFile() { return QStringLiteral("Parameters/patients_list.txt"); }
    /// A screen.pix of 260 by 261 micrometres and 120 Hz.
    static QByteArray calibrated() { return {"\0\0\1\x04\0\0\1\x05\0\0\0\1", 12}; }
    /// A line of the list.
    static QByteArray patient(const QByteArray &lastName,
                              const QByteArray &sessions = "0;0;0;0;0;0;0")
    {
        return "Mr.;" + lastName + ";Ann;01.02.1960;" + sessions + ";0;0;0\r\n";
    }

    DataRoot root{DataRoot::Folders::Missing};
    VirtualTime time{VirtualTime::Mode::Stepped};
    Boxes boxes;

private:
    bool reachTarget()
    {
        constexpr int target = 4;
        constexpr int patience = 20'000; // ms of virtual time
        for (int ms = 0; ms < patience && test2()->stage() != target; ++ms)
            time.advance(1);
        return test2()->stage() == target;
    }
    void clickInTest(const QString &button) const
    {
        QTest::mouseClick(test2()->findChild<QPushButton *>(button), Qt::LeftButton);
    }

    std::unique_ptr<Kelmoran> m_window;
};
