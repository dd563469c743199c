#pragma once

#include <QString>

/// The documents that were installed beside the program, one file a language, with English to fall
/// back on.
namespace documents {

/// A document by its base name.
enum Document { About, Publications, VideoInstructions, InstructionBook };

/// The file name without a language, for the assessor.
QString baseName(Document document);

/// The absolute path in a language, 0 to 5, whether the file is there or not. From German on the
/// folder and the file name run into one another ("Languages/DeKelmoran_About_de.html").
QString path(Document document, int language);

/// The absolute path in English. "About" is sought in the folder of the language of the run, the
/// others in the English one.
QString englishPath(Document document, int language);

/// The path of a document that is there; else that in English, whether it is there or not.
QString find(Document document, int language);

} // namespace documents
