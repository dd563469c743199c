#pragma once

class QTranslator;

/// The catalogues that lie beside the program decide the language of the run, once, at the start.
/// Loads the catalogue of the lowest language number that has one, English above all, and sets the
/// store's language number. Returns the number, 0 also when there is no catalogue at all. A
/// catalogue that doesn't load counts all the same; the texts then stay in English.
int selectLanguage(QTranslator &translator);

/// The toolkit's own texts ("Cancel" in a box) in this language, if the toolkit brings them.
void loadToolkitTexts(QTranslator &translator, int language);
