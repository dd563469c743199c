#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QPushButton>

/// The widgets that every task's form has under the same names.
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
    QLineEdit *pitch = nullptr;
    QLineEdit *task = nullptr;
    QLineEdit *subtask = nullptr;
    QLineEdit *no = nullptr;
    QLineEdit *result = nullptr;
    QLineEdit *timeTc = nullptr;
    QLineEdit *rtDelta = nullptr;
};

template <typename Form>
TaskWidgets taskWidgets(const Form &form)
{
    return {form.pb_go,       form.pb_next,         form.pb_continue, form.pb_results,
            form.pb_mainMenu, form.lbl_instruction, form.lbl_mode,    form.le_number,
            form.le_pitch,    form.le_task,         form.le_subtask,  form.le_no,
            form.le_result,   form.le_timeTc,       form.le_rt_delta};
}
