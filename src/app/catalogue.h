#pragma once

class QString;
class QTranslator;

/// Loads a catalogue of texts from a file in place of what the translator holds. One that isn't
/// whole isn't taken, nor is one that names others to be loaded with it, as none of the program's
/// does.
bool loadCatalogue(QTranslator &translator, const QString &path);
