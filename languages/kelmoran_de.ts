<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Assessor</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 konnte nicht geöffnet werden
%2</translation>
    </message>
</context>
<context>
    <name>AssessorClass</name>
    <message>
        <source>Assessor</source>
        <translation>Testleitung</translation>
    </message>
    <message>
        <source>Title :</source>
        <translation>Anrede:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Herr</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Frau</translation>
    </message>
    <message>
        <source>Dr.</source>
        <translation>Dr.</translation>
    </message>
    <message>
        <source>Prof.</source>
        <translation>Prof.</translation>
    </message>
    <message>
        <source>Last Name :</source>
        <translation>Nachname:</translation>
    </message>
    <message>
        <source>First Name :</source>
        <translation>Vorname:</translation>
    </message>
    <message>
        <source>Institution :</source>
        <translation>Einrichtung:</translation>
    </message>
    <message>
        <source>Street :</source>
        <translation>Straße:</translation>
    </message>
    <message>
        <source>Postal Code :</source>
        <translation>Postleitzahl:</translation>
    </message>
    <message>
        <source>City :</source>
        <translation>Ort:</translation>
    </message>
    <message>
        <source>Country :</source>
        <translation>Land:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>Calibration</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Please enter value in mm</source>
        <translation>Bitte den Wert in mm eingeben</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 konnte nicht geöffnet werden
%2</translation>
    </message>
    <message>
        <source>INSTRUCTIONS</source>
        <translation>ANLEITUNG</translation>
    </message>
    <message>
        <source>TRAINING</source>
        <translation>ÜBUNG</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>PAUSE</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>FEHLER</translation>
    </message>
    <message>
        <source>This screen is too small: it has %1 by %2 pixels, and the lines need %3 by %4. A length measured here would be wrong. Choose a higher resolution or a smaller scaling of the desktop, and calibrate again.</source>
        <translation>Dieser Bildschirm ist zu klein: Er hat %1 mal %2 Pixel, die Linien brauchen %3 mal %4. Eine hier gemessene Länge wäre falsch. Wählen Sie eine höhere Auflösung oder eine kleinere Skalierung der Anzeige, und kalibrieren Sie dann noch einmal.</translation>
    </message>
</context>
<context>
    <name>CalibrationClass</name>
    <message>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>Horizontal calibration
Enter the value of the line in mm :</source>
        <translation>Horizontale Kalibrierung
Länge der Linie in mm eingeben:</translation>
    </message>
    <message>
        <source>Vertical calibration
Enter the value of the line in mm :</source>
        <translation>Vertikale Kalibrierung
Länge der Linie in mm eingeben:</translation>
    </message>
</context>
<context>
    <name>Kelmoran</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 konnte nicht geöffnet werden
%2</translation>
    </message>
    <message>
        <source>Kelmoran is already running with the same data folders.</source>
        <translation>Kelmoran läuft bereits mit denselben Datenordnern.</translation>
    </message>
    <message>
        <source>Unable to find </source>
        <translation>Nicht gefunden: </translation>
    </message>
    <message>
        <source>Previous reports (*.pdf)</source>
        <translation>Frühere Berichte (*.pdf)</translation>
    </message>
    <message>
        <source>Unable to open the file...</source>
        <translation>Die Datei kann nicht geöffnet werden ...</translation>
    </message>
    <message>
        <source>This screen has %1 by %2 pixels. The tests need %3 by %4: parts of them are cut off.</source>
        <translation>Dieser Bildschirm hat %1 mal %2 Pixel. Die Tests brauchen %3 mal %4: Teile sind abgeschnitten.</translation>
    </message>
</context>
<context>
    <name>KelmoranClass</name>
    <message>
        <source>Kelmoran</source>
        <translation>Kelmoran</translation>
    </message>
    <message>
        <source>Version :</source>
        <translation>Version:</translation>
    </message>
    <message>
        <source>Assessor</source>
        <translation>Testleitung</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Institution</source>
        <translation>Einrichtung</translation>
    </message>
    <message>
        <source>Patient Name :</source>
        <translation>Patient/in:</translation>
    </message>
    <message>
        <source>Explains the task with examples first; chosen without training, it ends there and no test is run.</source>
        <translation>Erklärt die Aufgabe zuerst an Beispielen; ohne Übung ist danach Schluss, und es folgt kein Test.</translation>
    </message>
    <message>
        <source>With instruction</source>
        <translation>Mit Anleitung</translation>
    </message>
    <message>
        <source>Lets the patient practise each part of the task before the test.</source>
        <translation>Lässt die Testperson vor dem Test jeden Teil der Aufgabe üben.</translation>
    </message>
    <message>
        <source>With training</source>
        <translation>Mit Übung</translation>
    </message>
    <message>
        <source>Gives every trial the same length and sets a time limit for the answer.</source>
        <translation>Gibt jedem Durchgang die gleiche Dauer und begrenzt die Zeit für die Antwort.</translation>
    </message>
    <message>
        <source>Fixed duration</source>
        <translation>Feste Dauer</translation>
    </message>
    <message>
        <source>Shows the parameters of the task and the result of each trial on the screen.</source>
        <translation>Zeigt die Parameter der Aufgabe und das Ergebnis jedes Durchgangs auf dem Bildschirm.</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>Offers the three parts of the visual recognition task as tests of their own.</source>
        <translation>Bietet die drei Teile der visuellen Erkennung als eigene Tests an.</translation>
    </message>
    <message>
        <source>Subtasks</source>
        <translation>Teilaufgaben</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>Sitzungen</translation>
    </message>
    <message>
        <source>Visual recognition task</source>
        <translation>Visuelle Erkennung</translation>
    </message>
    <message>
        <source>Central cue attention task</source>
        <translation>Aufmerksamkeit mit Hinweisreiz</translation>
    </message>
    <message>
        <source>Movement detection task</source>
        <translation>Bewegungserkennung</translation>
    </message>
    <message>
        <source>Working memory task</source>
        <translation>Arbeitsgedächtnis</translation>
    </message>
    <message>
        <source>Central visual perception</source>
        <translation>Zentrale visuelle Wahrnehmung</translation>
    </message>
    <message>
        <source>Peripheral visual perception</source>
        <translation>Periphere visuelle Wahrnehmung</translation>
    </message>
    <message>
        <source>Dual task processing</source>
        <translation>Doppelaufgabe</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Personen</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archiv</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>About Kelmoran</source>
        <translation>Über Kelmoran</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Einstellungen...</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Add patient...</source>
        <translation>Patient/in hinzufügen...</translation>
    </message>
    <message>
        <source>Assessor...</source>
        <translation>Testleitung...</translation>
    </message>
    <message>
        <source>Previous reports</source>
        <translation>Frühere Berichte</translation>
    </message>
    <message>
        <source>Instruction book</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>Video instructions</source>
        <translation>Videoanleitungen</translation>
    </message>
    <message>
        <source>Publications</source>
        <translation>Publikationen</translation>
    </message>
    <message>
        <source>Choose the patient here. A new one is registered in the menu &quot;Users&quot;.</source>
        <translation>Wählen Sie hier die Testperson. Eine neue wird im Menü „Personen“ angelegt.</translation>
    </message>
    <message>
        <source>The latest session of this test. It counts only once the test has been completed.</source>
        <translation>Die letzte Sitzung dieses Tests. Sie zählt erst, wenn der Test zu Ende geführt ist.</translation>
    </message>
</context>
<context>
    <name>NewPatientClass</name>
    <message>
        <source>NewPatient</source>
        <translation>Patient/in hinzufügen</translation>
    </message>
    <message>
        <source>Gender :</source>
        <translation>Geschlecht:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Herr</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Frau</translation>
    </message>
    <message>
        <source>Last Name / study :</source>
        <translation>Nachname / Studie:</translation>
    </message>
    <message>
        <source>First Name  / id :</source>
        <translation>Vorname / ID:</translation>
    </message>
    <message>
        <source>Date of birth :</source>
        <translation>Geburtsdatum:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>PreferencesClass</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Screen resolution :</source>
        <translation>Bildschirmauflösung:</translation>
    </message>
    <message>
        <source>X</source>
        <translation>×</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Horizontal pixel size :</source>
        <translation>Pixelgröße horizontal:</translation>
    </message>
    <message>
        <source>µm</source>
        <translation>µm</translation>
    </message>
    <message>
        <source>Vertical pixel size :</source>
        <translation>Pixelgröße vertikal:</translation>
    </message>
    <message>
        <source>Screen frequency :</source>
        <translation>Bildfrequenz:</translation>
    </message>
    <message>
        <source>Re calibrate</source>
        <translation>Neu kalibrieren</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>How many pictures a second the screen shows. The exposures of the visual recognition task follow from it.</source>
        <translation>So viele Bilder zeigt der Bildschirm in der Sekunde. Danach richten sich die Darbietungszeiten der visuellen Erkennung.</translation>
    </message>
    <message>
        <source>Measures the pixels anew, with a ruler. Needed after a change of screen, resolution or scaling.</source>
        <translation>Misst die Pixel mit einem Lineal neu. Nötig, wenn sich Bildschirm, Auflösung oder Skalierung geändert haben.</translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message>
        <source>The report could not be printed.</source>
        <translation>Der Bericht konnte nicht gedruckt werden.</translation>
    </message>
    <message>
        <source>The report could not be loaded.</source>
        <translation>Der Bericht konnte nicht geladen werden.</translation>
    </message>
</context>
<context>
    <name>Result</name>
    <message>
        <source>Unable to open file</source>
        <translation>Datei kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 konnte nicht geöffnet werden
%2</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Dokument drucken</translation>
    </message>
</context>
<context>
    <name>ResultClass</name>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Dokument drucken</translation>
    </message>
</context>
<context>
    <name>TaskDialog</name>
    <message>
        <source>At worst a picture came %L1 ms late. Which trials: Results/timing.csv</source>
        <translation>Im schlimmsten Fall kam ein Bild %L1 ms zu spät. Welche Durchgänge: Results/timing.csv</translation>
    </message>
</context>
<context>
    <name>Test1</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 konnte nicht geöffnet werden
%2</translation>
    </message>
    <message>
        <source>Visual
recognition</source>
        <translation>Visuelle
Erkennung</translation>
    </message>
    <message>
        <source>Central
vision</source>
        <translation>Zentrales
Sehen</translation>
    </message>
    <message>
        <source>Peripheral
vision</source>
        <translation>Peripheres
Sehen</translation>
    </message>
    <message>
        <source>Dual task</source>
        <translation>Doppelaufgabe</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Beispiel</translation>
    </message>
    <message>
        <source>Unable to start!
Please undergo training!</source>
        <translation>Start nicht möglich!
Bitte zuerst üben!</translation>
    </message>
    <message>
        <source>Unstable measures, please start task over again</source>
        <translation>Instabile Messwerte, bitte die Aufgabe neu beginnen</translation>
    </message>
    <message>
        <source>Exposure time &gt; 4633ms
Check visual fields and
start training over again for this subtask</source>
        <translation>Darbietungszeit &gt; 4633&#xa0;ms
Bitte Gesichtsfeld prüfen und
die Übung dieser Teilaufgabe neu beginnen</translation>
    </message>
</context>
<context>
    <name>Test1Class</name>
    <message>
        <source>Test1</source>
        <translation>Test1</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>Nr.:</translation>
    </message>
    <message>
        <source>NoS1 :</source>
        <translation>NrS1:</translation>
    </message>
    <message>
        <source>NoS2 :</source>
        <translation>NrS2:</translation>
    </message>
    <message>
        <source>NoS3 :</source>
        <translation>NrS3:</translation>
    </message>
    <message>
        <source>Tim_02_S1</source>
        <translation>Tim_02_S1</translation>
    </message>
    <message>
        <source>Tim_02_S2</source>
        <translation>Tim_02_S2</translation>
    </message>
    <message>
        <source>Tim_02_S3</source>
        <translation>Tim_02_S3</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Ergebnis:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Teilaufg.:</translation>
    </message>
    <message>
        <source>Timer_01</source>
        <translation>Timer_01</translation>
    </message>
    <message>
        <source>Timer_03 :</source>
        <translation>Timer_03:</translation>
    </message>
    <message>
        <source>Timer_04 :</source>
        <translation>Timer_04:</translation>
    </message>
    <message>
        <source>Timer_RT</source>
        <translation>Timer_RT</translation>
    </message>
    <message>
        <source>Timer_06 :</source>
        <translation>Timer_06:</translation>
    </message>
    <message>
        <source>Global Size</source>
        <translation>Gesamtgröße</translation>
    </message>
    <message>
        <source>Shape</source>
        <translation>Form</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Kontrast</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Ausrichtung</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>Tri Size</source>
        <translation>Pfeilgröße</translation>
    </message>
    <message>
        <source>Tri Ratio</source>
        <translation>Pfeilverh.</translation>
    </message>
    <message>
        <source>Tri Offset</source>
        <translation>Pfeilabstand</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Zykluszeit:</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Aufgabe:</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Pixel hor.:</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Pixel vert.:</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Maske</translation>
    </message>
    <message>
        <source>Identical</source>
        <translation>Gleich</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>Oben links</translation>
    </message>
    <message>
        <source>Middle left</source>
        <translation>Mitte links</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Unten links</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Oben rechts</translation>
    </message>
    <message>
        <source>Middle right</source>
        <translation>Mitte rechts</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Unten rechts</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Hauptmenü</translation>
    </message>
</context>
<context>
    <name>Test2</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 konnte nicht geöffnet werden
%2</translation>
    </message>
    <message>
        <source>Attention
neutral</source>
        <translation>Aufmerksamkeit
ohne Hinweis</translation>
    </message>
    <message>
        <source>Attention
alerted</source>
        <translation>Aufmerksamkeit
mit Warnsignal</translation>
    </message>
    <message>
        <source>Attention
oriented</source>
        <translation>Aufmerksamkeit
mit Richtungspfeil</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Beispiel</translation>
    </message>
</context>
<context>
    <name>Test2Class</name>
    <message>
        <source>Test2</source>
        <translation>Test2</translation>
    </message>
    <message>
        <source>Asterisk</source>
        <translation>Stern</translation>
    </message>
    <message>
        <source>Timer_01</source>
        <translation>Timer_01</translation>
    </message>
    <message>
        <source>Timer_02</source>
        <translation>Timer_02</translation>
    </message>
    <message>
        <source>Timer_03</source>
        <translation>Timer_03</translation>
    </message>
    <message>
        <source>Timer_RT</source>
        <translation>Timer_RT</translation>
    </message>
    <message>
        <source>Timer_05</source>
        <translation>Timer_05</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Aufgabe:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Teilaufg.:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Pixelgr.:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Zykluszeit:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>Nr.:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Ergebnis:</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta:</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Hauptmenü</translation>
    </message>
</context>
<context>
    <name>Test3</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 konnte nicht geöffnet werden
%2</translation>
    </message>
    <message>
        <source>Movement
detection</source>
        <translation>Bewegung
erkennen</translation>
    </message>
</context>
<context>
    <name>Test3Class</name>
    <message>
        <source>Test3</source>
        <translation>Test3</translation>
    </message>
    <message>
        <source>Timer_01</source>
        <translation>Timer_01</translation>
    </message>
    <message>
        <source>Timer_02</source>
        <translation>Timer_02</translation>
    </message>
    <message>
        <source>Timer_03</source>
        <translation>Timer_03</translation>
    </message>
    <message>
        <source>Timer_04</source>
        <translation>Timer_04</translation>
    </message>
    <message>
        <source>Timer_05</source>
        <translation>Timer_05</translation>
    </message>
    <message>
        <source>Timer_06</source>
        <translation>Timer_06</translation>
    </message>
    <message>
        <source>Timer Mov</source>
        <translation>Timer Bew.</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Aufgabe:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Teilaufg.:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Pixelgr.:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Zykluszeit:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>Nr.:</translation>
    </message>
    <message>
        <source>Elapsed :</source>
        <translation>Zeit:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Ergebnis:</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta:</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Nach rechts</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Nach links</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Don&apos;t know</source>
        <translation>Weiß nicht</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Hauptmenü</translation>
    </message>
</context>
<context>
    <name>Test4</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 konnte nicht geöffnet werden
%2</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Gedächtnis</translation>
    </message>
    <message>
        <source>First localisation to remember</source>
        <translation>Merken Sie sich die erste Stelle</translation>
    </message>
    <message>
        <source>Second localisation</source>
        <translation>Zweite Stelle</translation>
    </message>
    <message>
        <source>Third localisation</source>
        <translation>Dritte Stelle</translation>
    </message>
    <message>
        <source>Fourth and last localisation</source>
        <translation>Vierte und letzte Stelle</translation>
    </message>
</context>
<context>
    <name>Test4Class</name>
    <message>
        <source>Test4</source>
        <translation>Test4</translation>
    </message>
    <message>
        <source>First Cross ?</source>
        <translation>Erstes Kreuz?</translation>
    </message>
    <message>
        <source>Last Cross ?</source>
        <translation>Letztes Kreuz?</translation>
    </message>
    <message>
        <source>Timer_01</source>
        <translation>Timer_01</translation>
    </message>
    <message>
        <source>Timer_02</source>
        <translation>Timer_02</translation>
    </message>
    <message>
        <source>Timer_03</source>
        <translation>Timer_03</translation>
    </message>
    <message>
        <source>Timer_04</source>
        <translation>Timer_04</translation>
    </message>
    <message>
        <source>Timer_05</source>
        <translation>Timer_05</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Pixel hor.:</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Pixel vert.:</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Aufgabe:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>Nr.:</translation>
    </message>
    <message>
        <source>Pos First :</source>
        <translation>Pos. erstes:</translation>
    </message>
    <message>
        <source>Dist First :</source>
        <translation>Abst. erstes:</translation>
    </message>
    <message>
        <source>Pos Last :</source>
        <translation>Pos. letztes:</translation>
    </message>
    <message>
        <source>Dist Last :</source>
        <translation>Abst. letztes:</translation>
    </message>
    <message>
        <source>GO</source>
        <translation>START</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Hauptmenü</translation>
    </message>
</context>
<context>
    <name>WebViewer</name>
    <message>
        <source>Unable to open file</source>
        <translation>Datei kann nicht geöffnet werden</translation>
    </message>
</context>
<context>
    <name>WebViewerClass</name>
    <message>
        <source>WebViewer</source>
        <translation>WebViewer</translation>
    </message>
</context>
</TS>
