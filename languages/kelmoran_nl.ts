<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="nl" sourcelanguage="en">
<context>
    <name>Assessor</name>
    <message>
        <source>Error</source>
        <translation>Fout</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 kan niet worden geopend
%2</translation>
    </message>
</context>
<context>
    <name>AssessorClass</name>
    <message>
        <source>Assessor</source>
        <translation>Testleider</translation>
    </message>
    <message>
        <source>Title :</source>
        <translation>Titel:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Dhr.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Mevr.</translation>
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
        <translation>Achternaam:</translation>
    </message>
    <message>
        <source>First Name :</source>
        <translation>Voornaam:</translation>
    </message>
    <message>
        <source>Institution :</source>
        <translation>Instelling:</translation>
    </message>
    <message>
        <source>Street :</source>
        <translation>Straat:</translation>
    </message>
    <message>
        <source>Postal Code :</source>
        <translation>Postcode:</translation>
    </message>
    <message>
        <source>City :</source>
        <translation>Plaats:</translation>
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
        <translation>Annuleren</translation>
    </message>
</context>
<context>
    <name>Calibration</name>
    <message>
        <source>Error</source>
        <translation>Fout</translation>
    </message>
    <message>
        <source>Please enter value in mm</source>
        <translation>Voer de waarde in mm in</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 kan niet worden geopend
%2</translation>
    </message>
    <message>
        <source>INSTRUCTIONS</source>
        <translation>INSTRUCTIE</translation>
    </message>
    <message>
        <source>TRAINING</source>
        <translation>OEFENING</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>PAUZE</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>FOUT</translation>
    </message>
    <message>
        <source>This screen is too small: it has %1 by %2 pixels, and the lines need %3 by %4. A length measured here would be wrong. Choose a higher resolution or a smaller scaling of the desktop, and calibrate again.</source>
        <translation>Dit scherm is te klein: het heeft %1 bij %2 pixels, en de lijnen hebben %3 bij %4 nodig. Een hier gemeten lengte zou onjuist zijn. Kies een hogere resolutie of een kleinere schaal van de weergave en kalibreer opnieuw.</translation>
    </message>
</context>
<context>
    <name>CalibrationClass</name>
    <message>
        <source>Calibration</source>
        <translation>Kalibratie</translation>
    </message>
    <message>
        <source>Horizontal calibration
Enter the value of the line in mm :</source>
        <translation>Horizontale kalibratie
Voer de lengte van de lijn in mm in:</translation>
    </message>
    <message>
        <source>Vertical calibration
Enter the value of the line in mm :</source>
        <translation>Verticale kalibratie
Voer de lengte van de lijn in mm in:</translation>
    </message>
</context>
<context>
    <name>Kelmoran</name>
    <message>
        <source>Error</source>
        <translation>Fout</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 kan niet worden geopend
%2</translation>
    </message>
    <message>
        <source>Kelmoran is already running with the same data folders.</source>
        <translation>Kelmoran is al actief met dezelfde gegevensmappen.</translation>
    </message>
    <message>
        <source>Unable to find </source>
        <translation>Niet gevonden: </translation>
    </message>
    <message>
        <source>Previous reports (*.pdf)</source>
        <translation>Eerdere verslagen (*.pdf)</translation>
    </message>
    <message>
        <source>Unable to open the file...</source>
        <translation>Het bestand kan niet worden geopend...</translation>
    </message>
    <message>
        <source>This screen has %1 by %2 pixels. The tests need %3 by %4: parts of them are cut off.</source>
        <translation>Dit scherm heeft %1 bij %2 pixels. De tests hebben %3 bij %4 nodig: delen zijn afgesneden.</translation>
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
        <translation>Versie:</translation>
    </message>
    <message>
        <source>Assessor</source>
        <translation>Testleider</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Naam</translation>
    </message>
    <message>
        <source>Institution</source>
        <translation>Instelling</translation>
    </message>
    <message>
        <source>Patient Name :</source>
        <translation>Naam patiënt:</translation>
    </message>
    <message>
        <source>Explains the task with examples first; chosen without training, it ends there and no test is run.</source>
        <translation>Legt de taak eerst uit met voorbeelden; zonder oefening eindigt het daar en volgt er geen test.</translation>
    </message>
    <message>
        <source>With instruction</source>
        <translation>Met instructie</translation>
    </message>
    <message>
        <source>Lets the patient practise each part of the task before the test.</source>
        <translation>Laat de patiënt elk onderdeel van de taak oefenen vóór de test.</translation>
    </message>
    <message>
        <source>With training</source>
        <translation>Met oefening</translation>
    </message>
    <message>
        <source>Gives every trial the same length and sets a time limit for the answer.</source>
        <translation>Geeft elke trial dezelfde duur en stelt een tijdslimiet voor het antwoord.</translation>
    </message>
    <message>
        <source>Fixed duration</source>
        <translation>Vaste duur</translation>
    </message>
    <message>
        <source>Shows the parameters of the task and the result of each trial on the screen.</source>
        <translation>Toont de parameters van de taak en het resultaat van elke trial op het scherm.</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>Offers the three parts of the visual recognition task as tests of their own.</source>
        <translation>Biedt de drie onderdelen van de visuele herkenningstaak als afzonderlijke tests aan.</translation>
    </message>
    <message>
        <source>Subtasks</source>
        <translation>Deeltaken</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>Sessies</translation>
    </message>
    <message>
        <source>Visual recognition task</source>
        <translation>Visuele herkenningstaak</translation>
    </message>
    <message>
        <source>Central cue attention task</source>
        <translation>Aandachtstaak met centrale cue</translation>
    </message>
    <message>
        <source>Movement detection task</source>
        <translation>Bewegingsdetectietaak</translation>
    </message>
    <message>
        <source>Working memory task</source>
        <translation>Werkgeheugentaak</translation>
    </message>
    <message>
        <source>Central visual perception</source>
        <translation>Centrale visuele waarneming</translation>
    </message>
    <message>
        <source>Peripheral visual perception</source>
        <translation>Perifere visuele waarneming</translation>
    </message>
    <message>
        <source>Dual task processing</source>
        <translation>Dubbeltaak</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Bestand</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Personen</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archief</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>About Kelmoran</source>
        <translation>Over Kelmoran</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Voorkeuren...</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Afsluiten</translation>
    </message>
    <message>
        <source>Add patient...</source>
        <translation>Patiënt toevoegen...</translation>
    </message>
    <message>
        <source>Assessor...</source>
        <translation>Testleider...</translation>
    </message>
    <message>
        <source>Previous reports</source>
        <translation>Eerdere verslagen</translation>
    </message>
    <message>
        <source>Instruction book</source>
        <translation>Handleiding</translation>
    </message>
    <message>
        <source>Video instructions</source>
        <translation>Video-instructies</translation>
    </message>
    <message>
        <source>Publications</source>
        <translation>Publicaties</translation>
    </message>
    <message>
        <source>Choose the patient here. A new one is registered in the menu &quot;Users&quot;.</source>
        <translation>Kies hier de patiënt. Een nieuwe patiënt registreert u in het menu ‘Personen’.</translation>
    </message>
    <message>
        <source>The latest session of this test. It counts only once the test has been completed.</source>
        <translation>De laatste sessie van deze test. Ze telt pas als de test is afgerond.</translation>
    </message>
</context>
<context>
    <name>NewPatientClass</name>
    <message>
        <source>NewPatient</source>
        <translation>Nieuwe patiënt</translation>
    </message>
    <message>
        <source>Gender :</source>
        <translation>Geslacht:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Dhr.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Mevr.</translation>
    </message>
    <message>
        <source>Last Name / study :</source>
        <translation>Achternaam / studie:</translation>
    </message>
    <message>
        <source>First Name  / id :</source>
        <translation>Voornaam / ID:</translation>
    </message>
    <message>
        <source>Date of birth :</source>
        <translation>Geboortedatum:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuleren</translation>
    </message>
</context>
<context>
    <name>PreferencesClass</name>
    <message>
        <source>Preferences</source>
        <translation>Voorkeuren</translation>
    </message>
    <message>
        <source>Screen resolution :</source>
        <translation>Schermresolutie:</translation>
    </message>
    <message>
        <source>X</source>
        <translation>×</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>pixels</translation>
    </message>
    <message>
        <source>Horizontal pixel size :</source>
        <translation>Horizontale pixelgrootte:</translation>
    </message>
    <message>
        <source>µm</source>
        <translation>µm</translation>
    </message>
    <message>
        <source>Vertical pixel size :</source>
        <translation>Verticale pixelgrootte:</translation>
    </message>
    <message>
        <source>Screen frequency :</source>
        <translation>Schermfrequentie:</translation>
    </message>
    <message>
        <source>Re calibrate</source>
        <translation>Opnieuw kalibreren</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuleren</translation>
    </message>
    <message>
        <source>How many pictures a second the screen shows. The exposures of the visual recognition task follow from it.</source>
        <translation>Hoeveel beelden het scherm per seconde toont. De aanbiedingstijden van de visuele herkenningstaak hangen ervan af.</translation>
    </message>
    <message>
        <source>Measures the pixels anew, with a ruler. Needed after a change of screen, resolution or scaling.</source>
        <translation>Meet de pixels opnieuw met een liniaal. Nodig na een wijziging van scherm, resolutie of schaal.</translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message>
        <source>The report could not be printed.</source>
        <translation>Het verslag kon niet worden afgedrukt.</translation>
    </message>
    <message>
        <source>The report could not be loaded.</source>
        <translation>Het verslag kon niet worden geladen.</translation>
    </message>
</context>
<context>
    <name>Result</name>
    <message>
        <source>Unable to open file</source>
        <translation>Bestand kan niet worden geopend</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fout</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 kan niet worden geopend
%2</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Document afdrukken</translation>
    </message>
</context>
<context>
    <name>ResultClass</name>
    <message>
        <source>Result</source>
        <translation>Resultaat</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Document afdrukken</translation>
    </message>
</context>
<context>
    <name>TaskDialog</name>
    <message>
        <source>At worst a picture came %L1 ms late. Which trials: Results/timing.csv</source>
        <translation>In het ergste geval kwam een beeld %L1 ms te laat. Welke trials: Results/timing.csv</translation>
    </message>
</context>
<context>
    <name>Test1</name>
    <message>
        <source>Error</source>
        <translation>Fout</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 kan niet worden geopend
%2</translation>
    </message>
    <message>
        <source>Visual
recognition</source>
        <translation>Visuele
herkenning</translation>
    </message>
    <message>
        <source>Central
vision</source>
        <translation>Centraal
zicht</translation>
    </message>
    <message>
        <source>Peripheral
vision</source>
        <translation>Perifeer
zicht</translation>
    </message>
    <message>
        <source>Dual task</source>
        <translation>Dubbeltaak</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Voorbeeld</translation>
    </message>
    <message>
        <source>Unable to start!
Please undergo training!</source>
        <translation>Starten niet mogelijk!
Voer eerst de oefening uit!</translation>
    </message>
    <message>
        <source>Unstable measures, please start task over again</source>
        <translation>Onstabiele metingen, begin de taak opnieuw</translation>
    </message>
    <message>
        <source>Exposure time &gt; 4633ms
Check visual fields and
start training over again for this subtask</source>
        <translation>Aanbiedingstijd &gt; 4633&#xa0;ms
Controleer de gezichtsvelden en
begin de oefening van deze deeltaak opnieuw</translation>
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
        <translation>Aantal</translation>
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
        <translation>Resultaat:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Deeltaak:</translation>
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
        <translation>Tot. grootte</translation>
    </message>
    <message>
        <source>Shape</source>
        <translation>Vorm</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Contrast</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Oriëntatie</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Grootte</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Afstand</translation>
    </message>
    <message>
        <source>Tri Size</source>
        <translation>Pijlgrootte</translation>
    </message>
    <message>
        <source>Tri Ratio</source>
        <translation>Pijlverh.</translation>
    </message>
    <message>
        <source>Tri Offset</source>
        <translation>Pijlafstand</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Cyclustijd:</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Taak:</translation>
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
        <translation>Masker</translation>
    </message>
    <message>
        <source>Identical</source>
        <translation>Gelijk</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>Linksboven</translation>
    </message>
    <message>
        <source>Middle left</source>
        <translation>Links midden</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Linksonder</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Rechtsboven</translation>
    </message>
    <message>
        <source>Middle right</source>
        <translation>Rechts midden</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Rechtsonder</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Volgende</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Doorgaan</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Resultaten</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Hoofdmenu</translation>
    </message>
</context>
<context>
    <name>Test2</name>
    <message>
        <source>Error</source>
        <translation>Fout</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 kan niet worden geopend
%2</translation>
    </message>
    <message>
        <source>Attention
neutral</source>
        <translation>Aandacht
zonder aanwijzing</translation>
    </message>
    <message>
        <source>Attention
alerted</source>
        <translation>Aandacht
met waarschuwing</translation>
    </message>
    <message>
        <source>Attention
oriented</source>
        <translation>Aandacht
met richtingspijl</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Voorbeeld</translation>
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
        <translation>Sterretje</translation>
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
        <translation>Aantal</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Taak:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Deeltaak:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Pixelgr.:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Cyclustijd:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>Nr.:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Resultaat:</translation>
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
        <translation>Volgende</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Doorgaan</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Resultaten</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Hoofdmenu</translation>
    </message>
</context>
<context>
    <name>Test3</name>
    <message>
        <source>Error</source>
        <translation>Fout</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 kan niet worden geopend
%2</translation>
    </message>
    <message>
        <source>Movement
detection</source>
        <translation>Beweging
opmerken</translation>
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
        <translation>Aantal</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Taak:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Deeltaak:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Pixelgr.:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Cyclustijd:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>Nr.:</translation>
    </message>
    <message>
        <source>Elapsed :</source>
        <translation>Tijd:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Resultaat:</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta:</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Naar rechts</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Naar beneden</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Naar links</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Naar boven</translation>
    </message>
    <message>
        <source>Don&apos;t know</source>
        <translation>Weet niet</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Volgende</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Doorgaan</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Resultaten</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Hoofdmenu</translation>
    </message>
</context>
<context>
    <name>Test4</name>
    <message>
        <source>Error</source>
        <translation>Fout</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>%1 kan niet worden geopend
%2</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Geheugen</translation>
    </message>
    <message>
        <source>First localisation to remember</source>
        <translation>Onthoud de eerste plaats</translation>
    </message>
    <message>
        <source>Second localisation</source>
        <translation>Tweede plaats</translation>
    </message>
    <message>
        <source>Third localisation</source>
        <translation>Derde plaats</translation>
    </message>
    <message>
        <source>Fourth and last localisation</source>
        <translation>Vierde en laatste plaats</translation>
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
        <translation>Eerste kruisje?</translation>
    </message>
    <message>
        <source>Last Cross ?</source>
        <translation>Laatste kruisje?</translation>
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
        <translation>Aantal</translation>
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
        <translation>Taak:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>Nr.:</translation>
    </message>
    <message>
        <source>Pos First :</source>
        <translation>Pos. eerste:</translation>
    </message>
    <message>
        <source>Dist First :</source>
        <translation>Afst. eerste:</translation>
    </message>
    <message>
        <source>Pos Last :</source>
        <translation>Pos. laatste:</translation>
    </message>
    <message>
        <source>Dist Last :</source>
        <translation>Afst. laatste:</translation>
    </message>
    <message>
        <source>GO</source>
        <translation>START</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Doorgaan</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Resultaten</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Hoofdmenu</translation>
    </message>
</context>
<context>
    <name>WebViewer</name>
    <message>
        <source>Unable to open file</source>
        <translation>Bestand kan niet worden geopend</translation>
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
