#pragma once

/// The columns of a trial row, as the tests of several rooms read them.
namespace column {
enum {
    Code,
    Gender,
    LastName,
    FirstName,
    Dob,
    Task,
    Session,
    Date,
    Time,
    Subtask,
    RankTask,
    RankSub,
    Rt = 20,
    Position = 21,
    Error = 29,
    Count = 30
};
} // namespace column
