#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QPushButton>

/// The widgets that the tasks' forms have under the same names; the last three not in every form.
struct TaskWidgets
{
    QPushButton *go = nullptr;
    QPushButton *next = nullptr;
    QPushButton *continueButton = nullptr;
    QPushButton *results = nullptr;
    QPushButton *mainMenu = nullptr;
    QLabel *instruction = nullptr;
    QLabel *mode = nullptr;
    QLineEdit *number = nullptr;
    QLineEdit *task = nullptr;
    QLineEdit *no = nullptr;
    QLineEdit *subtask = nullptr;
    QLineEdit *result = nullptr;
    QLineEdit *timeTc = nullptr;
};

template <typename Form>
TaskWidgets taskWidgets(const Form &form)
{
    TaskWidgets widgets{
        form.pb_go,           form.pb_next,  form.pb_continue, form.pb_results, form.pb_mainMenu,
        form.lbl_instruction, form.lbl_mode, form.le_number,   form.le_task,    form.le_no};
    if constexpr (requires { form.le_subtask; }) {
        widgets.subtask = form.le_subtask;
        widgets.result = form.le_result;
        widgets.timeTc = form.le_timeTc;
    }
    return widgets;
}
