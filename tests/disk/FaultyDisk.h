#pragma once

#include <string>
#include <vector>

/// The disk below one folder, and what can go wrong with it. Whoever links this has its calls of
/// the system counted where they concern a file in there: this unit defines open(), write(),
/// rename() and their like for the whole process, the toolkit included. One of the calls, or all
/// from one on, then fails as it does on a real disk, whoever runs the test, root too.
namespace faultyDisk {

enum class Kind { Look, Open, Create, Read, Write, Sync, Truncate, Move, Remove, Folder };

struct Call
{
    Kind kind;
    std::string path; ///< below the folder, as "Results/output.csv"
};

enum class Way {
    None,
    Full,     ///< from this call on there is no room left; a write fails half-way
    WasFull,  ///< the same, and there is room again for the next call
    Broken,   ///< this call fails, with an error of the device
    Denied,   ///< this call isn't permitted, and its file can't be opened from then on
    ReadOnly, ///< from this call on nothing can be changed
    Folder,   ///< before this call somebody puts a folder in the file's place
    Lost,     ///< before this call somebody moves its folder away
    Deleted,  ///< before this call somebody deletes the file
};

const char *nameOf(Kind kind);
const char *nameOf(Way way);

/// What the path of a file ends in that has no name yet, behind that of its folder.
inline constexpr char nameless[] = "/(new)";

/// Whether that can happen to such a call.
bool concerns(Way way, const Call &call);

/// Begins to count the calls below this absolute path, whose bin/ is the working directory. What
/// is moved away goes to `away`, on the same file system.
/// @param fault the number of the call, from 0, at which it begins
/// @param twoDisks a file can't be moved from one folder to another
void watch(const std::string &root, const std::string &away, Way way = Way::None,
           std::size_t fault = 0, bool twoDisks = false);

/// Ends it: the disk is whole again. Returns the calls.
std::vector<Call> leave();

/// How many calls there were until now.
std::size_t count();

} // namespace faultyDisk
