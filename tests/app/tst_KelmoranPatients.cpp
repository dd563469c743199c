#include "Desk.h"
#include "NewPatient.h"
#include "patientsList.h"

/// The patients of the main window, and its mailboxes.
class tst_KelmoranPatients : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_desk = std::make_unique<Desk>(); }
    void cleanup() { m_desk.reset(); }

    // The patients.
    void thePatientsAreSortedAndNoneIsChosen();
    void theFirstEmptyLineEndsTheList();
    void aChosenPatientIsReadIntoTheStore();
    void aShortLineReadsAsEmptyAndZero();
    void twoLinesWithOneKeyShareTheNumbersOfTheFirst();
    void aPatientWhoIsNotFoundKeepsTheFormerNumbers();
    void aListThatCantBeReadStillOpensTheTests();
    void aListThatCanBeReadAgainIsReadAsATestBegins();
    void aTestOfAPatientWhoWasNotReadLeavesTheListAndTellsIt();

    // A registration.
    void aNewPatientIsFiledAndChosen();
    void aTestBegunAtOnceIsTheNewPatients();
    void noTestIsBegunForANewPatientWhoCannotBeFiled();
    void noTestIsBegunWhileAPatientIsBeingRegistered();
    void aRunningTestStaysItsPatients();
    void aNewPatientStaysTheCurrentItemOfTheSortedBox();
    void aNameKeepsItsLetters();
    void theSamePatientTwiceGivesTwoLinesAndTwoItems();
    void aRegistrationThatCantBeWrittenLeavesEverythingAsItWas();
    void aRegistrationThatCantBeWrittenLeavesNobodyWhereNobodyStood();
    void afterARefusedRegistrationTheNextOneGoesWell();
    void aNameWithASeparatorIsRegisteredButNotFound();

    // The mailboxes.
    void oneBeatEmptiesAllMailboxes();
    void aRefusedRegistrationLeavesTheOtherMailboxesToTheNextBeat();
    void aRefusedPitchOpensTheCalibrationAgain();
    void aFlagSetTwiceInOneBeatIsWorkedOnce();

private:
    std::unique_ptr<Desk> m_desk;
};

// The patients.

void tst_KelmoranPatients::thePatientsAreSortedAndNoneIsChosen()
{
    m_desk->openWith(Desk::patient("Zorn") + Desk::patient("alt") + Desk::patient("Berg"));
    const QStringList expected{QStringLiteral("Berg Ann 01.02.1960"),
                               QStringLiteral("Zorn Ann 01.02.1960"),
                               QStringLiteral("alt Ann 01.02.1960")};
    QCOMPARE(m_desk->patientNames(), expected);
    QCOMPARE(m_desk->patients()->currentIndex(), -1);
    QVERIFY(!m_desk->patients()->isEditable());
}

void tst_KelmoranPatients::theFirstEmptyLineEndsTheList()
{
    m_desk->openWith(Desk::patient("Berg") + "\r\n" + Desk::patient("Alt"));
    QCOMPARE(m_desk->patientNames(), QStringList{QStringLiteral("Berg Ann 01.02.1960")});
}

void tst_KelmoranPatients::aChosenPatientIsReadIntoTheStore()
{
    m_desk->openWith(Desk::patient("Alt", "7;7;7;7;7;7;7") +
                     Desk::patient("Berg", "1;2;3;4;5;6;12"));
    m_desk->choose(1);
    const SessionStore &store = sessionStore();
    QCOMPARE(store.patientName, QStringLiteral("Berg Ann 01.02.1960"));
    QCOMPARE(store.gender, QStringLiteral("Mr."));
    QCOMPARE(store.lastName, QStringLiteral("Berg"));
    QCOMPARE(store.firstName, QStringLiteral("Ann"));
    QCOMPARE(store.dob, QDate(1960, 2, 1));
    QCOMPARE(store.sessionNb, (std::array<int, 7>{1, 2, 3, 4, 5, 6, 12}));
    const QStringList shown{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                            QStringLiteral("4"), QStringLiteral("5"), QStringLiteral("6"),
                            QStringLiteral("12")};
    QCOMPARE(m_desk->sessions(), shown);
}

void tst_KelmoranPatients::aShortLineReadsAsEmptyAndZero()
{
    m_desk->openWith("Mrs.;Berg;Ann;01.02.1960;3;x");
    m_desk->choose(0);
    QCOMPARE(sessionStore().lastName, QStringLiteral("Berg"));
    QCOMPARE(sessionStore().sessionNb, (std::array<int, 7>{3, 0, 0, 0, 0, 0, 0}));
    const QStringList shown{QStringLiteral("3"), QStringLiteral("x"), QString(), QString(),
                            QString(),           QString(),           QString()};
    QCOMPARE(m_desk->sessions(), shown);
}

void tst_KelmoranPatients::twoLinesWithOneKeyShareTheNumbersOfTheFirst()
{
    m_desk->openWith(Desk::patient("Berg", "1;1;1;1;1;1;1") +
                     Desk::patient("Berg", "2;2;2;2;2;2;2"));
    QCOMPARE(m_desk->patients()->count(), 2);
    m_desk->choose(1);
    QCOMPARE(sessionStore().sessionNb[1], 1);
}

void tst_KelmoranPatients::aPatientWhoIsNotFoundKeepsTheFormerNumbers()
{
    m_desk->openWith(Desk::patient("Alt", "7;7;7;7;7;7;7") + Desk::patient("Berg"));
    m_desk->choose(0);
    m_desk->root.write(Desk::listFile(),
                       Desk::patient("Alt", "7;7;7;7;7;7;7")); // Berg is taken out by hand
    m_desk->choose(1);
    QCOMPARE(sessionStore().patientName, QStringLiteral("Berg Ann 01.02.1960"));
    QCOMPARE(sessionStore().lastName, QStringLiteral("Alt"));
    QCOMPARE(sessionStore().sessionNb[6], 7);
    QCOMPARE(m_desk->session(7)->text(), QStringLiteral("7"));
}

void tst_KelmoranPatients::aListThatCantBeReadStillOpensTheTests()
{
    m_desk->openWith(Desk::patient("Berg", "7;7;7;7;7;7;7"));
    m_desk->root.block(Desk::listFile());
    m_desk->choose(0);
    QVERIFY(m_desk->isEnabled(QStringLiteral("pb_test2")));
    QCOMPARE(sessionStore().patientName, QStringLiteral("Berg Ann 01.02.1960"));
    QCOMPARE(sessionStore().lastName, QString());
    QCOMPARE(m_desk->session(1)->text(), QString());
}

void tst_KelmoranPatients::aListThatCanBeReadAgainIsReadAsATestBegins()
{
    const QByteArray list = Desk::patient("Alt") + Desk::patient("Berg", "7;8;7;7;7;7;7");
    m_desk->openWith(list);
    m_desk->choose(0);
    m_desk->root.block(Desk::listFile());
    m_desk->choose(1);
    QCOMPARE(sessionStore().lastName, QStringLiteral("Alt"));
    m_desk->root.unblock(Desk::listFile());
    m_desk->root.write(Desk::listFile(), list);
    m_desk->playTest();
    QCOMPARE(m_desk->boxes.take().size(), 1); // a report has no words here
    QCOMPARE(sessionStore().lastName, QStringLiteral("Berg"));
    QCOMPARE(m_desk->session(2)->text(), QStringLiteral("9"));
    QCOMPARE(m_desk->root.bytes(Desk::listFile()),
             Desk::patient("Alt") + Desk::patient("Berg", "7;9;7;7;7;7;7"));
}

void tst_KelmoranPatients::aTestOfAPatientWhoWasNotReadLeavesTheListAndTellsIt()
{
    const QByteArray list = Desk::patient("Berg", "7;8;7;7;7;7;7");
    m_desk->openWith(list);
    m_desk->root.block(Desk::listFile());
    m_desk->choose(0);
    m_desk->playTest([this, list] {
        m_desk->root.unblock(Desk::listFile());
        m_desk->root.write(Desk::listFile(), list);
    });
    const auto told = m_desk->boxes.take();
    QCOMPARE(told.size(), 2);
    QVERIFY(told[0].text.startsWith(QStringLiteral("Failed to open patients_list.txt\n")));
    QCOMPARE(m_desk->root.bytes(Desk::listFile()), list);

    m_desk->playTest(); // the list is there again
    QCOMPARE(m_desk->boxes.take().size(), 1);
    QCOMPARE(m_desk->root.bytes(Desk::listFile()), Desk::patient("Berg", "7;9;7;7;7;7;7"));
}

// A registration.

void tst_KelmoranPatients::aNewPatientIsFiledAndChosen()
{
    m_desk->openWith(Desk::patient("Berg", "7;7;7;7;7;7;7"));
    m_desk->choose(0);
    Desk::leaveNewPatient(QStringLiteral("Zorn"), QStringLiteral("Eva"));
    m_desk->time.advance(200);

    QVERIFY(!sessionStore().newPatient);
    QCOMPARE(m_desk->root.bytes(Desk::listFile()),
             Desk::patient("Berg", "7;7;7;7;7;7;7") +
                 "Mrs.;Zorn;Eva;02.03.1950;0;0;0;0;0;0;0;0;0;0\r\n");
    QCOMPARE(m_desk->patients()->currentText(), QStringLiteral("Zorn Eva 02.03.1950"));
    QCOMPARE(sessionStore().patientName, QStringLiteral("Zorn Eva 02.03.1950"));
    QCOMPARE(sessionStore().sessionNb, (std::array<int, 7>{}));
    QCOMPARE(m_desk->sessions(), QStringList(7, QStringLiteral("0")));
}

void tst_KelmoranPatients::aTestBegunAtOnceIsTheNewPatients()
{
    const QByteArray list = Desk::patient("Berg", "7;7;7;7;7;7;7");
    m_desk->openWith(list);
    m_desk->choose(0);
    Desk::leaveNewPatient(QStringLiteral("Zorn"), QStringLiteral("Eva"));
    m_desk->playTest(); // before the next beat
    QCOMPARE(sessionStore().patientName, QStringLiteral("Zorn Eva 02.03.1950"));
    QCOMPARE(m_desk->root.bytes(Desk::listFile()),
             list + "Mrs.;Zorn;Eva;02.03.1950;0;1;0;0;0;0;0;0;0;0\r\n");
    const QByteArray row =
        m_desk->root.bytes(QStringLiteral("Results/output.csv")).split('\n').at(1);
    QVERIFY2(row.startsWith(";Mrs.;Zorn;Eva;02/03/1950;2;1;"), row.constData());
    m_desk->boxes.take(); // a report has no words here
}

void tst_KelmoranPatients::noTestIsBegunForANewPatientWhoCannotBeFiled()
{
    m_desk->openWith(Desk::patient("Berg", "7;7;7;7;7;7;7"));
    m_desk->choose(0);
    m_desk->root.block(Desk::listFile());
    Desk::leaveNewPatient(QStringLiteral("Zorn"), QStringLiteral("Eva"));
    m_desk->click(QStringLiteral("pb_test2"));
    QCOMPARE(m_desk->boxes.take().size(), 1);
    QVERIFY(!m_desk->test2()->isVisible());
    QCOMPARE(m_desk->session(2)->text(), QStringLiteral("7"));
    QCOMPARE(sessionStore().lastName, QStringLiteral("Berg"));
}

void tst_KelmoranPatients::noTestIsBegunWhileAPatientIsBeingRegistered()
{
    m_desk->openWith(Desk::patient("Berg"));
    m_desk->choose(0);
    m_desk->find<QAction>(QStringLiteral("actionAdd_patient"))->trigger();
    auto *form = m_desk->find<NewPatient>(QStringLiteral("NewPatientClass"));
    QVERIFY(form->isVisible());
    m_desk->window()->activateWindow();
    QCoreApplication::processEvents();
    m_desk->click(QStringLiteral("pb_test2"));
    QVERIFY(!m_desk->test2()->isVisible());
    QCoreApplication::processEvents();
    QVERIFY(form->isActiveWindow());
    QCOMPARE(m_desk->session(2)->text(), QStringLiteral("0"));
}

void tst_KelmoranPatients::aRunningTestStaysItsPatients()
{
    m_desk->openWith(Desk::patient("Alt") + Desk::patient("Berg"));
    m_desk->choose(1);
    m_desk->find<QCheckBox>(QStringLiteral("cb_withInstruction"))->setChecked(false);
    m_desk->find<QCheckBox>(QStringLiteral("cb_withTraining"))->setChecked(false);
    m_desk->click(QStringLiteral("pb_test2"));
    QVERIFY(m_desk->test2()->isVisible());
    m_desk->choose(0);
    QCOMPARE(sessionStore().lastName, QStringLiteral("Berg"));
    QCOMPARE(m_desk->patients()->currentIndex(), 1);
    QCOMPARE(m_desk->session(2)->text(), QStringLiteral("1"));
    m_desk->find<QAction>(QStringLiteral("actionAdd_patient"))->trigger();
    QVERIFY(!m_desk->find<NewPatient>(QStringLiteral("NewPatientClass"))->isVisible());
    QTest::keyClick(m_desk->test2(), Qt::Key_Escape);
    m_desk->choose(0);
    QCOMPARE(sessionStore().lastName, QStringLiteral("Alt"));
}

void tst_KelmoranPatients::aNewPatientStaysTheCurrentItemOfTheSortedBox()
{
    m_desk->openWith(Desk::patient("Berg") + Desk::patient("Zorn"));
    Desk::leaveNewPatient(QStringLiteral("Moor"), QStringLiteral("Eva"));
    m_desk->time.advance(200);
    const QStringList expected{QStringLiteral("Berg Ann 01.02.1960"),
                               QStringLiteral("Moor Eva 02.03.1950"),
                               QStringLiteral("Zorn Ann 01.02.1960")};
    QCOMPARE(m_desk->patientNames(), expected);
    QCOMPARE(m_desk->patients()->currentIndex(), 1);
    for (const QString &name : Desk::tests())
        QVERIFY2(m_desk->isEnabled(name), qPrintable(name));
}

void tst_KelmoranPatients::aNameKeepsItsLetters()
{
    m_desk->openWith("");
    Desk::leaveNewPatient(QStringLiteral("Αθηνά"), QStringLiteral("Şahin"));
    m_desk->time.advance(200);
    QCOMPARE(m_desk->root.bytes(Desk::listFile()),
             QByteArray("Mrs.;Αθηνά;Şahin;02.03.1950;0;0;0;0;0;0;0;0;0;0\r\n"));

    // The next run finds the patient again.
    m_desk->choose(0);
    QCOMPARE(sessionStore().lastName, QStringLiteral("Αθηνά"));
    QCOMPARE(sessionStore().dob, QDate(1950, 3, 2));
}

void tst_KelmoranPatients::theSamePatientTwiceGivesTwoLinesAndTwoItems()
{
    const QByteArray zeros = "Mrs.;Zorn;Eva;02.03.1950;0;0;0;0;0;0;0;0;0;0\r\n";
    const QByteArray three = "Mrs.;Zorn;Eva;02.03.1950;0;3;0;0;0;0;0;0;0;0\r\n";
    const QString key = QStringLiteral("Zorn Eva 02.03.1950");
    m_desk->openWith("");
    Desk::leaveNewPatient(QStringLiteral("Zorn"), QStringLiteral("Eva"));
    m_desk->time.advance(200);
    m_desk->root.write(Desk::listFile(), three); // as if three sessions had been run

    Desk::leaveNewPatient(QStringLiteral("Zorn"), QStringLiteral("Eva"));
    m_desk->time.advance(200);
    QCOMPARE(m_desk->patientNames(), (QStringList{key, key}));
    QCOMPARE(m_desk->root.bytes(Desk::listFile()), three + zeros);
    QCOMPARE(sessionStore().sessionNb[1], 3); // those of the first line

    QCOMPARE(patientsList::rewritePatientLine(key, {{patientsList::SessionT1 + 1, 3}}), QString());
    QCOMPARE(m_desk->root.bytes(Desk::listFile()), three + three);
}

void tst_KelmoranPatients::aRegistrationThatCantBeWrittenLeavesEverythingAsItWas()
{
    m_desk->openWith(Desk::patient("Berg", "7;7;7;7;7;7;7") + Desk::patient("Moor"));
    m_desk->choose(0);
    const SessionStore before = sessionStore();
    m_desk->root.block(Desk::listFile());
    Desk::leaveNewPatient(QStringLiteral("Alt"), QStringLiteral("Eva"));
    m_desk->time.advance(200);

    const auto messages = m_desk->boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(!messages[0].text.endsWith(u'\n'));

    QCOMPARE(m_desk->patients()->count(), 2);
    QCOMPARE(m_desk->patients()->currentText(), QStringLiteral("Berg Ann 01.02.1960"));
    QCOMPARE(m_desk->sessions(), QStringList(7, QStringLiteral("7")));
    const SessionStore &store = sessionStore();
    QVERIFY(!store.newPatient);
    QCOMPARE(store.patientName, before.patientName);
    QCOMPARE(store.gender, before.gender);
    QCOMPARE(store.lastName, before.lastName);
    QCOMPARE(store.firstName, before.firstName);
    QCOMPARE(store.dob, before.dob);
    QCOMPARE(store.sessionNb, before.sessionNb);
}

void tst_KelmoranPatients::aRegistrationThatCantBeWrittenLeavesNobodyWhereNobodyStood()
{
    m_desk->openWith(Desk::patient("Berg"));
    m_desk->root.block(Desk::listFile());
    Desk::leaveNewPatient(QStringLiteral("Alt"), QStringLiteral("Eva"));
    m_desk->time.advance(200);
    QCOMPARE(m_desk->boxes.take().size(), 1);
    QCOMPARE(m_desk->patients()->currentIndex(), -1);
    QCOMPARE(m_desk->patients()->count(), 1);
    QCOMPARE(sessionStore().lastName, QString());
    QVERIFY(!sessionStore().dob.isValid());
    QVERIFY(!m_desk->isEnabled(QStringLiteral("pb_test2")));
}

void tst_KelmoranPatients::afterARefusedRegistrationTheNextOneGoesWell()
{
    m_desk->openWith("");
    m_desk->root.block(Desk::listFile());
    Desk::leaveNewPatient(QStringLiteral("Alt"), QStringLiteral("Eva"));
    m_desk->time.advance(200);
    QCOMPARE(m_desk->boxes.take().size(), 1);

    m_desk->root.unblock(Desk::listFile());
    Desk::leaveNewPatient(QStringLiteral("Alt"), QStringLiteral("Eva"));
    m_desk->time.advance(200);
    QCOMPARE(m_desk->patientNames(), QStringList{QStringLiteral("Alt Eva 02.03.1950")});
    QCOMPARE(m_desk->root.bytes(Desk::listFile()),
             QByteArray("Mrs.;Alt;Eva;02.03.1950;0;0;0;0;0;0;0;0;0;0\r\n"));
}

void tst_KelmoranPatients::aNameWithASeparatorIsRegisteredButNotFound()
{
    m_desk->openWith(Desk::patient("Berg", "7;7;7;7;7;7;7"));
    Desk::leaveNewPatient(QStringLiteral("Al;t"), QStringLiteral("Eva"));
    m_desk->time.advance(200);
    QCOMPARE(m_desk->patients()->currentText(), QStringLiteral("Al;t Eva 02.03.1950"));
    QCOMPARE(sessionStore().patientName, QStringLiteral("Al;t Eva 02.03.1950"));
    QCOMPARE(sessionStore().lastName, QStringLiteral("Al;t"));
    QVERIFY(m_desk->isEnabled(QStringLiteral("pb_test2")));
}

// The mailboxes.

void tst_KelmoranPatients::oneBeatEmptiesAllMailboxes()
{
    m_desk->openWith("");
    m_desk->root.write(QStringLiteral("Parameters/assessor.txt"), "Dr.;Berg;Ann;Clinic\n");
    Desk::leaveNewPatient(QStringLiteral("Zorn"), QStringLiteral("Eva"));
    SessionStore &store = sessionStore();
    store.escapeSeq = true;
    store.assessor = true;
    store.pitchError = true;
    m_desk->time.advance(200);

    QVERIFY(!store.newPatient && !store.escapeSeq && !store.assessor && !store.pitchError);
    QCOMPARE(m_desk->patients()->currentText(), QStringLiteral("Zorn Eva 02.03.1950"));
    QCOMPARE(m_desk->label(QStringLiteral("lbl_name")), QStringLiteral("Dr. Ann Berg"));
    QVERIFY(m_desk->calibration()->isVisible());
}

void tst_KelmoranPatients::aRefusedRegistrationLeavesTheOtherMailboxesToTheNextBeat()
{
    m_desk->openWith("");
    m_desk->time.advance(100); // on a beat
    m_desk->root.block(Desk::listFile());
    Desk::leaveNewPatient(QStringLiteral("Zorn"), QStringLiteral("Eva"));
    SessionStore &store = sessionStore();
    store.escapeSeq = true;
    store.assessor = true;
    store.pitchError = true;
    m_desk->time.advance(200);
    QCOMPARE(m_desk->boxes.take().size(), 1);
    QVERIFY(!store.newPatient);
    QVERIFY(store.escapeSeq && store.assessor && store.pitchError);

    m_desk->time.advance(200);
    QVERIFY(!store.escapeSeq && !store.assessor && !store.pitchError);
}

void tst_KelmoranPatients::aRefusedPitchOpensTheCalibrationAgain()
{
    m_desk->openWith("");
    sessionStore().pitchError = true;
    m_desk->time.advance(200);
    QVERIFY(!sessionStore().pitchError);
    QVERIFY(m_desk->calibration()->isVisible());
}

void tst_KelmoranPatients::aFlagSetTwiceInOneBeatIsWorkedOnce()
{
    m_desk->openWith("");
    Desk::leaveNewPatient(QStringLiteral("Alt"), QStringLiteral("Eva"));
    Desk::leaveNewPatient(QStringLiteral("Zorn"), QStringLiteral("Eva"));
    m_desk->time.advance(1000);
    QCOMPARE(m_desk->patientNames(), QStringList{QStringLiteral("Zorn Eva 02.03.1950")});
}

QTEST_MAIN(tst_KelmoranPatients)
#include "tst_KelmoranPatients.moc"
