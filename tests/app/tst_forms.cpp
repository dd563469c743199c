#include "Assessor.h"
#include "Calibration.h"
#include "DataRoot.h"
#include "DrawRoundedRectangle.h"
#include "Kelmoran.h"
#include "NewPatient.h"
#include "Preferences.h"
#include "Result.h"
#include "Test1.h"
#include "Test2.h"
#include "Test3.h"
#include "Test4.h"
#include "VirtualTime.h"
#include "WebViewer.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTest>
#include <QTranslator>

#include <functional>
#include <memory>

namespace {

/// One form of the program, open as the assessor meets it.
struct Form
{
    const char *name;
    std::function<QWidget *()> open;
};

/// The forms of the program, on a calibrated screen and with one patient.
class Desk
{
public:
    Desk()
    {
        root.write(QStringLiteral("Parameters/screen.pix"), {"\0\0\1\x04\0\0\1\x05\0\0\0\0", 12});
        root.write(QStringLiteral("Parameters/assessor.txt"),
                   "Prof.;Doe;Jane;University Hospital;Main Street 1;1000;Town;Land\n");
        root.write(QStringLiteral("Parameters/patients_list.txt"),
                   "Mrs.;Doe;Jane;01.02.1950;1;2;3;4;5;6;7;283;367;483\r\n");
        sessionStore().patientName = QStringLiteral("Doe Jane 01.02.1950");
        root.write(QStringLiteral("Languages/En/Kelmoran_Task3_en.html"), "v_t3");
        window = std::make_unique<Kelmoran>();
        window->show();
        time.advance(500);
        find<QCheckBox>("cb_subTask")->setChecked(true);
        auto *patients = find<QComboBox>("cob_patientName");
        patients->setCurrentIndex(0);
        Q_EMIT patients->activated(0);
        result.setPrinting(false);
    }

    template <typename Widget>
    Widget *find(const char *name) const
    {
        auto *found = window->findChild<Widget *>(QString::fromLatin1(name));
        if (found == nullptr)
            qFatal("no %s", name);
        return found;
    }
    template <typename Dialog>
    Dialog *dialog() const
    {
        return window->findChild<Dialog *>(QString(), Qt::FindDirectChildrenOnly);
    }

    /// Those that lie on the desk as windows of their own.
    QList<Form> windows()
    {
        return {
            {"Kelmoran", [this] { return window.get(); }},
            {"NewPatient", [this] { return opened<NewPatient>(&NewPatient::goNewPatient); }},
            {"Assessor", [this] { return opened<Assessor>(&Assessor::goAssessor); }},
            {"Preferences", [this] { return opened<Preferences>(&Preferences::goPreferences); }},
            {"WebViewer",
             [this] {
                 viewer.show();
                 return &viewer;
             }},
            {"Result", [this] {
                 result.goResult3(true, time.currentDateTime(), 1, QTime(0, 5), 40, 0, 0, 0, 0, 0,
                                  0, 0);
                 return &result;
             }}};
    }

    /// Those that take the whole screen.
    QList<Form> wholeScreens()
    {
        return {
            {"Calibration", [this] { return opened<Calibration>(&Calibration::goCalibration); }},
            {"Test1",
             [this] {
                 dialog<Test1>()->goTest1(0, true, false, true, true);
                 return dialog<Test1>();
             }},
            {"Test2",
             [this] {
                 dialog<Test2>()->goTest2(0, true, false, true, true);
                 return dialog<Test2>();
             }},
            {"Test3",
             [this] {
                 dialog<Test3>()->goTest3(1, true, false, true, true);
                 return dialog<Test3>();
             }},
            {"Test4", [this] {
                 dialog<Test4>()->goTest4(true, false, true);
                 return dialog<Test4>();
             }}};
    }

    DataRoot root;
    VirtualTime time{VirtualTime::Mode::Stepped};
    Boxes boxes;
    std::unique_ptr<Kelmoran> window;
    WebViewer viewer;
    Result result;

private:
    template <typename Dialog>
    QWidget *opened(void (Dialog::*go)())
    {
        (dialog<Dialog>()->*go)();
        return dialog<Dialog>();
    }
};

QString nameOf(const QWidget &widget)
{
    const QString own = widget.objectName();
    return own.isEmpty() ? QString::fromLatin1(widget.metaObject()->className()) : own;
}

/// Where the ink of a text lies in the room that its widget has for it.
QRect inkOf(const QWidget &widget, QString text, const QSize &room)
{
    text.remove(u'&');
    const QFontMetrics metrics = widget.fontMetrics();
    const QStringList lines = text.split(u'\n');
    const int below = metrics.lineSpacing() * int(lines.size() - 1);
    const auto *label = qobject_cast<const QLabel *>(&widget);
    const bool atTop = label != nullptr && (label->alignment() & Qt::AlignTop);
    const int top = atTop ? 0 : (room.height() - below - metrics.height()) / 2;
    const int first = top + metrics.ascent() + metrics.tightBoundingRect(lines.first()).top();
    const int last =
        top + metrics.ascent() + below + metrics.tightBoundingRect(lines.last()).bottom();
    return {0, first, metrics.size(0, text).width(), last - first + 1};
}

/// What a widget has for its text: beside a check box's box, between a button's edges, before the
/// arrow of a combo box.
QSize roomOf(const QWidget &widget)
{
    const QStyle *style = widget.style();
    if (const auto *box = qobject_cast<const QCheckBox *>(&widget)) {
        QStyleOptionButton option;
        option.initFrom(box);
        return style->subElementRect(QStyle::SE_CheckBoxContents, &option, box).size();
    }
    if (const auto *box = qobject_cast<const QComboBox *>(&widget)) {
        QStyleOptionComboBox option;
        option.initFrom(box);
        return style
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box)
            .size();
    }
    return widget.contentsRect().size();
}

/// The texts that a widget can show.
QStringList textsOf(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return label->wordWrap() ? QStringList() : QStringList(label->text());
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return {button->text()};
    QStringList texts;
    if (const auto *box = qobject_cast<const QComboBox *>(&widget)) {
        for (int i = 0; i < box->count(); ++i)
            texts.append(box->itemText(i));
    }
    return texts;
}

/// The texts that don't fit into their widget, of all that belong to this window.
QStringList cutTexts(const QWidget &window)
{
    QStringList cut;
    const auto widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (widget->window() != &window || widget->objectName().startsWith(u"qt_"))
            continue;
        const QStringList texts = textsOf(*widget);
        for (const QString &text : texts) {
            const QRect room(QPoint(), roomOf(*widget));
            const QRect ink = inkOf(*widget, text, room.size());
            if (!text.isEmpty() && !room.contains(ink))
                cut.append(QStringLiteral("%1 \"%2\" %3 wide, from %4 to %5, in %6 by %7")
                               .arg(nameOf(*widget), text)
                               .arg(ink.width())
                               .arg(ink.top())
                               .arg(ink.bottom())
                               .arg(room.width())
                               .arg(room.height()));
        }
    }
    return cut;
}

/// Widgets of a form that can be seen and whose areas lie upon one another.
QStringList overlapping(const QWidget &form)
{
    QStringList found;
    const auto widgets = form.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (qsizetype i = 0; i < widgets.size(); ++i) {
        for (qsizetype k = i + 1; k < widgets.size(); ++k) {
            const QWidget *one = widgets.at(i);
            const QWidget *other = widgets.at(k);
            if (one->isVisible() && other->isVisible() && !one->isWindow() && !other->isWindow() &&
                one->geometry().intersects(other->geometry()))
                found.append(nameOf(*one) + u'+' + nameOf(*other));
        }
    }
    return found;
}

/// The widgets that the Tab key visits, in its order.
QList<QWidget *> tabChain(QWidget *window)
{
    QList<QWidget *> chain;
    for (QWidget *next = window->nextInFocusChain(); next != window;
         next = next->nextInFocusChain()) {
        if (next->window() == window && next->isVisible() && next->isEnabled() &&
            (next->focusPolicy() & Qt::TabFocus) && next->focusProxy() == nullptr)
            chain.append(next);
    }
    return chain;
}

/// Whether an eye that reads line by line, or column by column, comes to the second one next.
bool readsOn(const QWidget &from, const QWidget &to)
{
    const QRect first(from.mapTo(from.window(), QPoint()), from.size());
    const QRect second(to.mapTo(to.window(), QPoint()), to.size());
    return second.top() > first.bottom() || second.left() > first.right();
}

QString spokenName(QWidget *widget)
{
    QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(widget);
    return spoken == nullptr ? QString() : spoken->text(QAccessible::Name).trimmed();
}

/// Goes through the task's instruction to its end and looks at each of its screens; false if it
/// doesn't come to an end.
bool walkThrough(QWidget *task, VirtualTime &time, const std::function<void()> &look)
{
    constexpr int patience = 600'000; // ms
    auto *next = task->findChild<QPushButton *>(QStringLiteral("pb_next"));
    for (int waited = 0; waited < patience; waited += 100) {
        if (!task->isVisible())
            return true;
        look();
        if (next->isVisible())
            QTest::mouseClick(next, Qt::LeftButton);
        else
            time.advance(100);
    }
    return false;
}

const QStringList &languages()
{
    static const QStringList all{QStringLiteral("en"), QStringLiteral("fr"), QStringLiteral("de"),
                                 QStringLiteral("it"), QStringLiteral("es"), QStringLiteral("nl")};
    return all;
}

void addLanguages()
{
    QTest::addColumn<QString>("language");
    for (const QString &language : languages())
        QTest::newRow(qPrintable(language)) << language;
}

/// A catalogue in use, for as long as this lives.
class Spoken
{
public:
    explicit Spoken(const QString &language)
    {
        if (!m_translator.load(QStringLiteral(CATALOGUES "/kelmoran_%1.qm").arg(language)) ||
            !QCoreApplication::installTranslator(&m_translator))
            qFatal("no catalogue %s", qPrintable(language));
    }

private:
    QTranslator m_translator;
};

} // namespace

/// What every form of the program owes its user, at the scaling of the desktop that
/// QT_SCALE_FACTOR asks for: this program is run once for each.
class tst_forms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theScalingIsTheOneAskedFor()
    {
        const qreal asked = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
        const QScreen *screen = QGuiApplication::primaryScreen();
        QCOMPARE(screen->devicePixelRatio(), asked);
        QCOMPARE(screen->size() * asked, QSize(1920, 1080) * std::max(asked, 1.0));
    }

    void everyTextFitsItsWidget_data() { addLanguages(); }
    void everyTextFitsItsWidget()
    {
        QFETCH(QString, language);
        const Spoken spoken(language);
        Desk desk;
        QStringList cut;
        const auto forms = desk.windows() + desk.wholeScreens();
        for (const Form &form : forms) {
            QWidget *window = form.open();
            cut += cutTexts(*window);
            window->close();
        }
        QVERIFY2(cut.isEmpty(), qPrintable(cut.join(u'\n')));
    }

    void everyScreenOfAnInstructionFits_data() { addLanguages(); }
    void everyScreenOfAnInstructionFits()
    {
        QFETCH(QString, language);
        const Spoken spoken(language);
        Desk desk;
        QStringList cut;
        const auto forms = desk.wholeScreens();
        for (const Form &form : forms) {
            QWidget *window = form.open();
            auto *mode = window->findChild<QLabel *>(QStringLiteral("lbl_mode"));
            if (mode == nullptr)
                continue; // no task
            int screens = 0;
            QVERIFY(walkThrough(window, desk.time, [&] {
                cut += cutTexts(*window);
                ++screens;
            }));
            QVERIFY(screens > 5);
            for (int word = 0; word < 4; ++word) {
                mode->setText(desk.dialog<Calibration>()->isMode(word));
                cut += cutTexts(*window);
            }
        }
        cut.removeDuplicates();
        QVERIFY2(cut.isEmpty(), qPrintable(cut.join(u'\n')));
    }

    void theMenusFitTheirBar_data() { addLanguages(); }
    void theMenusFitTheirBar()
    {
        QFETCH(QString, language);
        const Spoken spoken(language);
        const Desk desk;
        QMenuBar *bar = desk.window->menuBar();
        const auto menus = bar->actions();
        QCOMPARE(menus.size(), 4);
        for (const QAction *menu : menus)
            QVERIFY(bar->rect().contains(bar->actionGeometry(const_cast<QAction *>(menu))));
    }

    void nothingLiesUponAnotherThing_data() { addLanguages(); }
    void nothingLiesUponAnotherThing()
    {
        QFETCH(QString, language);
        const Spoken spoken(language);
        Desk desk;
        const auto forms = desk.windows();
        for (const Form &form : forms)
            QCOMPARE(overlapping(*form.open()), QStringList());
        QCOMPARE(overlapping(*desk.window->centralWidget()), QStringList());
    }

    void noWindowIsLargerThanTheScreen_data() { addLanguages(); }
    void noWindowIsLargerThanTheScreen()
    {
        QFETCH(QString, language);
        const Spoken spoken(language);
        Desk desk;
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const auto windows = desk.windows();
        for (const Form &form : windows) {
            const QWidget *window = form.open();
            QVERIFY2(window->width() <= screen.width() && window->height() <= screen.height(),
                     form.name);
            const QSize least = window->minimumSizeHint();
            QVERIFY2(window->width() >= least.width() && window->height() >= least.height(),
                     form.name);
        }
        const auto wholeScreens = desk.wholeScreens();
        for (const Form &form : wholeScreens) {
            QWidget *window = form.open();
            QCOMPARE(window->size(), screen.size());
            window->close();
        }
    }

    void theTabKeyGoesAsTheEyeReads_data() { addLanguages(); }
    void theTabKeyGoesAsTheEyeReads()
    {
        QFETCH(QString, language);
        const Spoken spoken(language);
        Desk desk;
        const auto windows = desk.windows();
        for (const Form &form : windows) {
            const QList<QWidget *> chain = tabChain(form.open());
            for (qsizetype i = 1; i < chain.size(); ++i)
                QVERIFY2(readsOn(*chain.at(i - 1), *chain.at(i)),
                         qPrintable(nameOf(*chain.at(i - 1)) + QStringLiteral(" before ") +
                                    nameOf(*chain.at(i))));
        }
    }

    void theTabKeyReachesEverythingThatTakesAnEntry()
    {
        Desk desk;
        const auto windows = desk.windows();
        for (const Form &form : windows) {
            QWidget *window = form.open();
            const QList<QWidget *> chain = tabChain(window);
            const auto widgets = window->findChildren<QWidget *>();
            for (QWidget *widget : widgets) {
                const bool takesEntries = qobject_cast<QPushButton *>(widget) != nullptr ||
                                          qobject_cast<QCheckBox *>(widget) != nullptr ||
                                          qobject_cast<QComboBox *>(widget) != nullptr ||
                                          qobject_cast<QDateEdit *>(widget) != nullptr;
                if (widget->window() == window && widget->isVisible() && widget->isEnabled() &&
                    takesEntries)
                    QVERIFY2(chain.contains(widget), qPrintable(nameOf(*widget)));
            }
        }
    }

    void everyControlHasASpokenName_data() { addLanguages(); }
    void everyControlHasASpokenName()
    {
        QFETCH(QString, language);
        const Spoken spoken(language);
        Desk desk;
        const auto forms = desk.windows() + desk.wholeScreens();
        for (const Form &form : forms) {
            QWidget *window = form.open();
            const auto widgets = window->findChildren<QWidget *>();
            for (QWidget *widget : widgets) {
                const bool control = qobject_cast<QAbstractButton *>(widget) != nullptr ||
                                     qobject_cast<QLineEdit *>(widget) != nullptr ||
                                     qobject_cast<QComboBox *>(widget) != nullptr ||
                                     qobject_cast<QDateEdit *>(widget) != nullptr;
                if (control && widget->window() == window &&
                    !widget->objectName().startsWith(u"qt_"))
                    QVERIFY2(!spokenName(widget).isEmpty(),
                             qPrintable(QString::fromLatin1(form.name) + u' ' + nameOf(*widget)));
            }
            if (window != desk.window.get())
                window->close();
        }
    }

    void theOptionsTellWhatTheyDo_data() { addLanguages(); }
    void theOptionsTellWhatTheyDo()
    {
        QFETCH(QString, language);
        const Spoken spoken(language);
        Desk desk;
        for (const char *name : {"cb_withInstruction", "cb_withTraining", "cb_fixedDuration",
                                 "cb_parameters", "cb_subTask", "cob_patientName", "le_session1"})
            QVERIFY2(!desk.find<QWidget>(name)->toolTip().isEmpty(), name);
        for (const char *name : {"cob_screenFreq", "pb_reCalibrate"})
            QVERIFY2(!desk.dialog<Preferences>()
                          ->findChild<QWidget *>(QString::fromLatin1(name))
                          ->toolTip()
                          .isEmpty(),
                     name);
        QVERIFY(!desk.result.findChild<QPushButton *>(QStringLiteral("pb_printer"))
                     ->toolTip()
                     .isEmpty());
    }

    void escapeLeavesAWindow()
    {
        Desk desk;
        const QByteArray before = desk.root.bytes(QStringLiteral("Parameters/assessor.txt")) +
                                  desk.root.bytes(QStringLiteral("Parameters/patients_list.txt")) +
                                  desk.root.bytes(QStringLiteral("Parameters/screen.pix"));
        QVERIFY(before.size() > 100);
        const auto windows = desk.windows();
        for (const Form &form : windows) {
            QWidget *window = form.open();
            if (window == desk.window.get())
                continue; // it ends the program
            QTest::keyClick(window, Qt::Key_Escape);
            QVERIFY2(!window->isVisible(), form.name);
        }
        desk.time.advance(400);
        QCOMPARE(desk.root.bytes(QStringLiteral("Parameters/assessor.txt")) +
                     desk.root.bytes(QStringLiteral("Parameters/patients_list.txt")) +
                     desk.root.bytes(QStringLiteral("Parameters/screen.pix")),
                 before);
        QVERIFY(desk.window->isVisible());
    }

    void ctrlAndADigitStartATest()
    {
        Desk desk;
        desk.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(desk.window.get()));
        QTest::keyClick(desk.window.get(), Qt::Key_2, Qt::ControlModifier);
        auto *task = desk.dialog<Test2>();
        QTRY_VERIFY(task->isVisible()); // the button is seen to go down and up first
        QCOMPARE(desk.find<QLineEdit>("le_session2")->text(), QStringLiteral("3"));
        // The desk's keys mean nothing to a task.
        QTest::keyClick(task, Qt::Key_1, Qt::ControlModifier);
        QTest::keyClick(task, Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(desk.find<QLineEdit>("le_session1")->text(), QStringLiteral("1"));
        QVERIFY(!desk.dialog<NewPatient>()->isVisible());
        task->close();
    }

    void noTwoKeysAreTheSame()
    {
        const Desk desk;
        QList<QKeySequence> keys;
        const auto actions = desk.window->findChildren<QAction *>();
        for (const QAction *action : actions)
            keys.append(action->shortcut());
        const auto buttons = desk.window->centralWidget()->findChildren<QPushButton *>();
        for (const QPushButton *button : buttons)
            keys.append(button->shortcut());
        keys.removeAll(QKeySequence());
        QCOMPARE(keys.size(), 6 + 7);
        for (const QKeySequence &key : std::as_const(keys))
            QCOMPARE(keys.count(key), 1);
    }

    void aFigureKeepsItsMillimetres()
    {
        // A screen whose dots are 0.25 mm apart, whatever the scaling of the desktop.
        constexpr double dot = 0.25;
        const auto dots = [](QWidget &widget, const QRect &part) {
            const QImage image = widget.grab(part).toImage();
            int lit = 0;
            for (int x = 0; x < image.width(); ++x)
                lit += qGray(image.pixel(x, image.height() / 2)) > 127 ? 1 : 0;
            return lit;
        };
        Desk desk;
        auto *calibration = desk.dialog<Calibration>();
        calibration->goCalibration();
        auto *line = calibration->findChild<QFrame *>(QStringLiteral("line_2"));
        const double measured = dots(*line, line->rect()) * dot;
        auto *width = calibration->findChild<QLineEdit *>(QStringLiteral("le_horzPitch"));
        QTest::keyClicks(width, QString::number(qRound(measured)));
        QTest::keyClick(width, Qt::Key_Return);
        auto *height = calibration->findChild<QLineEdit *>(QStringLiteral("le_vertPitch"));
        QTest::keyClicks(height, QString::number(qRound(measured / 2)));
        QTest::keyClick(height, Qt::Key_Return);
        QVERIFY(!calibration->isVisible());

        auto *task = desk.dialog<Test1>();
        task->goTest1(1, false, false, false, false);
        const auto figures = task->findChildren<DrawRoundedRectangle *>();
        QVERIFY(!figures.isEmpty());
        QWidget *figure = figures.first();
        figure->show();
        constexpr double side = 14; // mm
        QVERIFY(std::abs(dots(*figure, figure->rect()) * dot - side) < 0.6);
        task->close();
    }
};

QTEST_MAIN(tst_forms)
#include "tst_forms.moc"
