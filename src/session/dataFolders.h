#pragma once

#include <QString>

/// Where the data lie. Every path is relative to the working directory, which the program never
/// changes; its parent is the data root.
namespace dataFolders {

inline constexpr char archives[] = "../Archives/";
inline constexpr char parameters[] = "../Parameters/";
inline constexpr char results[] = "../Results/";

/// Makes the three folders that are missing. What can't be made is found out by the first file in
/// it.
void create();

/// The path of a file in one of these folders.
QString path(const char *folder, const QString &fileName);

/// A patient's key as a part of a file name: a record made by hand may hold slashes, and no key may
/// lead out of its folder. A key too long for a file name is cut, with a number that tells it from
/// others.
QString asFileName(const QString &patientKey);

/// "../Archives/<patient key>/"
QString archiveOf(const QString &patientKey);

/// The one line of ../Parameters/site.txt, empty if there is no such file.
QString readSiteCode();

} // namespace dataFolders
