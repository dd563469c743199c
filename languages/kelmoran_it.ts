<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>Assessor</name>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossibile aprire %1
%2</translation>
    </message>
</context>
<context>
    <name>AssessorClass</name>
    <message>
        <source>Assessor</source>
        <translation>Esaminatore</translation>
    </message>
    <message>
        <source>Title :</source>
        <translation>Titolo:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Sig.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Sig.ra</translation>
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
        <translation>Cognome:</translation>
    </message>
    <message>
        <source>First Name :</source>
        <translation>Nome:</translation>
    </message>
    <message>
        <source>Institution :</source>
        <translation>Istituto:</translation>
    </message>
    <message>
        <source>Street :</source>
        <translation>Via:</translation>
    </message>
    <message>
        <source>Postal Code :</source>
        <translation>CAP:</translation>
    </message>
    <message>
        <source>City :</source>
        <translation>Città:</translation>
    </message>
    <message>
        <source>Country :</source>
        <translation>Paese:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
</context>
<context>
    <name>Calibration</name>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Please enter value in mm</source>
        <translation>Inserire un valore in mm</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossibile aprire %1
%2</translation>
    </message>
    <message>
        <source>INSTRUCTIONS</source>
        <translation>ISTRUZIONI</translation>
    </message>
    <message>
        <source>TRAINING</source>
        <translation>ESERCITAZIONE</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>PAUSA</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ERRORE</translation>
    </message>
    <message>
        <source>This screen is too small: it has %1 by %2 pixels, and the lines need %3 by %4. A length measured here would be wrong. Choose a higher resolution or a smaller scaling of the desktop, and calibrate again.</source>
        <translation>Questo schermo è troppo piccolo: ha %1 per %2 pixel, e le linee ne richiedono %3 per %4. Una lunghezza misurata qui sarebbe sbagliata. Scelga una risoluzione più alta o un ingrandimento minore dello schermo, poi ripeta la calibrazione.</translation>
    </message>
</context>
<context>
    <name>CalibrationClass</name>
    <message>
        <source>Calibration</source>
        <translation>Calibrazione</translation>
    </message>
    <message>
        <source>Horizontal calibration
Enter the value of the line in mm :</source>
        <translation>Calibrazione orizzontale
Lunghezza della linea in mm:</translation>
    </message>
    <message>
        <source>Vertical calibration
Enter the value of the line in mm :</source>
        <translation>Calibrazione verticale
Lunghezza della linea in mm:</translation>
    </message>
</context>
<context>
    <name>Kelmoran</name>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossibile aprire %1
%2</translation>
    </message>
    <message>
        <source>Kelmoran is already running with the same data folders.</source>
        <translation>Kelmoran è già aperto con le stesse cartelle di dati.</translation>
    </message>
    <message>
        <source>Unable to find </source>
        <translation>Non trovato: </translation>
    </message>
    <message>
        <source>Previous reports (*.pdf)</source>
        <translation>Report precedenti (*.pdf)</translation>
    </message>
    <message>
        <source>Unable to open the file...</source>
        <translation>Impossibile aprire il file...</translation>
    </message>
    <message>
        <source>This screen has %1 by %2 pixels. The tests need %3 by %4: parts of them are cut off.</source>
        <translation>Questo schermo ha %1 per %2 pixel. I test ne richiedono %3 per %4: alcune parti sono tagliate.</translation>
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
        <translation>Versione:</translation>
    </message>
    <message>
        <source>Assessor</source>
        <translation>Esaminatore</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nome</translation>
    </message>
    <message>
        <source>Institution</source>
        <translation>Istituto</translation>
    </message>
    <message>
        <source>Patient Name :</source>
        <translation>Nome del paziente:</translation>
    </message>
    <message>
        <source>Explains the task with examples first; chosen without training, it ends there and no test is run.</source>
        <translation>Spiega prima il compito con esempi; senza l’esercitazione tutto finisce lì e il test non viene eseguito.</translation>
    </message>
    <message>
        <source>With instruction</source>
        <translation>Con istruzioni</translation>
    </message>
    <message>
        <source>Lets the patient practise each part of the task before the test.</source>
        <translation>Permette al paziente di esercitarsi in ogni parte del compito prima del test.</translation>
    </message>
    <message>
        <source>With training</source>
        <translation>Con esercitazione</translation>
    </message>
    <message>
        <source>Gives every trial the same length and sets a time limit for the answer.</source>
        <translation>Dà a tutte le prove la stessa durata e pone un limite di tempo alla risposta.</translation>
    </message>
    <message>
        <source>Fixed duration</source>
        <translation>Durata fissa</translation>
    </message>
    <message>
        <source>Shows the parameters of the task and the result of each trial on the screen.</source>
        <translation>Mostra sullo schermo i parametri del compito e il risultato di ogni prova.</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Parametri</translation>
    </message>
    <message>
        <source>Offers the three parts of the visual recognition task as tests of their own.</source>
        <translation>Propone come test a sé le tre parti del compito di riconoscimento visivo.</translation>
    </message>
    <message>
        <source>Subtasks</source>
        <translation>Sottocompiti</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>Sedute</translation>
    </message>
    <message>
        <source>Visual recognition task</source>
        <translation>Riconoscimento visivo</translation>
    </message>
    <message>
        <source>Central cue attention task</source>
        <translation>Attenzione con indizio centrale</translation>
    </message>
    <message>
        <source>Movement detection task</source>
        <translation>Rilevamento del movimento</translation>
    </message>
    <message>
        <source>Working memory task</source>
        <translation>Memoria di lavoro</translation>
    </message>
    <message>
        <source>Central visual perception</source>
        <translation>Percezione visiva centrale</translation>
    </message>
    <message>
        <source>Peripheral visual perception</source>
        <translation>Percezione visiva periferica</translation>
    </message>
    <message>
        <source>Dual task processing</source>
        <translation>Doppio compito</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Utenti</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archivio</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aiuto</translation>
    </message>
    <message>
        <source>About Kelmoran</source>
        <translation>Informazioni su Kelmoran</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Preferenze...</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Esci</translation>
    </message>
    <message>
        <source>Add patient...</source>
        <translation>Aggiungi paziente...</translation>
    </message>
    <message>
        <source>Assessor...</source>
        <translation>Esaminatore...</translation>
    </message>
    <message>
        <source>Previous reports</source>
        <translation>Report precedenti</translation>
    </message>
    <message>
        <source>Instruction book</source>
        <translation>Manuale</translation>
    </message>
    <message>
        <source>Video instructions</source>
        <translation>Istruzioni video</translation>
    </message>
    <message>
        <source>Publications</source>
        <translation>Pubblicazioni</translation>
    </message>
    <message>
        <source>Choose the patient here. A new one is registered in the menu &quot;Users&quot;.</source>
        <translation>Scelga qui il paziente. Un nuovo paziente si registra nel menu «Utenti».</translation>
    </message>
    <message>
        <source>The latest session of this test. It counts only once the test has been completed.</source>
        <translation>L’ultima seduta di questo test. Conta solo se il test è stato portato a termine.</translation>
    </message>
</context>
<context>
    <name>NewPatientClass</name>
    <message>
        <source>NewPatient</source>
        <translation>Nuovo paziente</translation>
    </message>
    <message>
        <source>Gender :</source>
        <translation>Sesso:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Sig.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Sig.ra</translation>
    </message>
    <message>
        <source>Last Name / study :</source>
        <translation>Cognome / studio:</translation>
    </message>
    <message>
        <source>First Name  / id :</source>
        <translation>Nome / ID:</translation>
    </message>
    <message>
        <source>Date of birth :</source>
        <translation>Data di nascita:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
</context>
<context>
    <name>PreferencesClass</name>
    <message>
        <source>Preferences</source>
        <translation>Preferenze</translation>
    </message>
    <message>
        <source>Screen resolution :</source>
        <translation>Risoluzione dello schermo:</translation>
    </message>
    <message>
        <source>X</source>
        <translation>×</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>pixel</translation>
    </message>
    <message>
        <source>Horizontal pixel size :</source>
        <translation>Larghezza di un pixel:</translation>
    </message>
    <message>
        <source>µm</source>
        <translation>µm</translation>
    </message>
    <message>
        <source>Vertical pixel size :</source>
        <translation>Altezza di un pixel:</translation>
    </message>
    <message>
        <source>Screen frequency :</source>
        <translation>Frequenza dello schermo:</translation>
    </message>
    <message>
        <source>Re calibrate</source>
        <translation>Ricalibra</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>How many pictures a second the screen shows. The exposures of the visual recognition task follow from it.</source>
        <translation>Quante immagini lo schermo mostra al secondo. Ne dipendono i tempi di esposizione del riconoscimento visivo.</translation>
    </message>
    <message>
        <source>Measures the pixels anew, with a ruler. Needed after a change of screen, resolution or scaling.</source>
        <translation>Misura di nuovo i pixel con un righello. Va fatto quando cambiano lo schermo, la risoluzione o la scala.</translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message>
        <source>The report could not be printed.</source>
        <translation>Non è stato possibile stampare il report.</translation>
    </message>
    <message>
        <source>The report could not be loaded.</source>
        <translation>Non è stato possibile caricare il report.</translation>
    </message>
</context>
<context>
    <name>Result</name>
    <message>
        <source>Unable to open file</source>
        <translation>Impossibile aprire il file</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossibile aprire %1
%2</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Stampa documento</translation>
    </message>
</context>
<context>
    <name>ResultClass</name>
    <message>
        <source>Result</source>
        <translation>Risultato</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Stampa documento</translation>
    </message>
</context>
<context>
    <name>TaskDialog</name>
    <message>
        <source>At worst a picture came %L1 ms late. Which trials: Results/timing.csv</source>
        <translation>Nel caso peggiore un’immagine è arrivata con %L1 ms di ritardo. Prove interessate: Results/timing.csv</translation>
    </message>
</context>
<context>
    <name>Test1</name>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossibile aprire %1
%2</translation>
    </message>
    <message>
        <source>Visual
recognition</source>
        <translation>Riconoscimento
visivo</translation>
    </message>
    <message>
        <source>Central
vision</source>
        <translation>Visione
centrale</translation>
    </message>
    <message>
        <source>Peripheral
vision</source>
        <translation>Visione
periferica</translation>
    </message>
    <message>
        <source>Dual task</source>
        <translation>Doppio compito</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Esempio</translation>
    </message>
    <message>
        <source>Unable to start!
Please undergo training!</source>
        <translation>Impossibile iniziare!
È necessaria prima l’esercitazione!</translation>
    </message>
    <message>
        <source>Unstable measures, please start task over again</source>
        <translation>Misure instabili, ricominciare il compito</translation>
    </message>
    <message>
        <source>Exposure time &gt; 4633ms
Check visual fields and
start training over again for this subtask</source>
        <translation>Tempo di esposizione &gt; 4633&#xa0;ms
Controllare i campi visivi e
ricominciare l’esercitazione di questo sottocompito</translation>
    </message>
</context>
<context>
    <name>Test1Class</name>
    <message>
        <source>Test1</source>
        <translation>Test 1</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Numero</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N.:</translation>
    </message>
    <message>
        <source>NoS1 :</source>
        <translation>N.S1:</translation>
    </message>
    <message>
        <source>NoS2 :</source>
        <translation>N.S2:</translation>
    </message>
    <message>
        <source>NoS3 :</source>
        <translation>N.S3:</translation>
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
        <translation>Risultato:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Sottocomp.:</translation>
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
        <translation>Dim. globali</translation>
    </message>
    <message>
        <source>Shape</source>
        <translation>Forma</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Contrasto</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Inclinazione</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Grandezza</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Distanza</translation>
    </message>
    <message>
        <source>Tri Size</source>
        <translation>Dim. tri.</translation>
    </message>
    <message>
        <source>Tri Ratio</source>
        <translation>Rapp. tri.</translation>
    </message>
    <message>
        <source>Tri Offset</source>
        <translation>Distanza tri.</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Dur. ciclo:</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Compito:</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Passo orizz.:</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Passo vert.:</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Maschera</translation>
    </message>
    <message>
        <source>Identical</source>
        <translation>Uguali</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>In alto a sinistra</translation>
    </message>
    <message>
        <source>Middle left</source>
        <translation>Al centro a sinistra</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>In basso a sinistra</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>In alto a destra</translation>
    </message>
    <message>
        <source>Middle right</source>
        <translation>Al centro a destra</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>In basso a destra</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Inizia</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Avanti</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continua</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Risultati</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menu principale</translation>
    </message>
</context>
<context>
    <name>Test2</name>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossibile aprire %1
%2</translation>
    </message>
    <message>
        <source>Attention
neutral</source>
        <translation>Attenzione
neutra</translation>
    </message>
    <message>
        <source>Attention
alerted</source>
        <translation>Attenzione
con allerta</translation>
    </message>
    <message>
        <source>Attention
oriented</source>
        <translation>Attenzione
orientata</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Esempio</translation>
    </message>
</context>
<context>
    <name>Test2Class</name>
    <message>
        <source>Test2</source>
        <translation>Test 2</translation>
    </message>
    <message>
        <source>Asterisk</source>
        <translation>Asterisco</translation>
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
        <translation>Numero</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Compito:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Sottocomp.:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Passo:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Dur. ciclo:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N.:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Risultato:</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta:</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Inizia</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Avanti</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continua</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Risultati</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menu principale</translation>
    </message>
</context>
<context>
    <name>Test3</name>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossibile aprire %1
%2</translation>
    </message>
    <message>
        <source>Movement
detection</source>
        <translation>Rilevamento
del movimento</translation>
    </message>
</context>
<context>
    <name>Test3Class</name>
    <message>
        <source>Test3</source>
        <translation>Test 3</translation>
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
        <translation>Timer Mov</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Numero</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Compito:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Sottocomp.:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Passo:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Dur. ciclo:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N.:</translation>
    </message>
    <message>
        <source>Elapsed :</source>
        <translation>Trascorso:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Risultato:</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta:</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Destra</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Giù</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Sinistra</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Su</translation>
    </message>
    <message>
        <source>Don&apos;t know</source>
        <translation>Non so</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Inizia</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Avanti</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continua</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Risultati</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menu principale</translation>
    </message>
</context>
<context>
    <name>Test4</name>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossibile aprire %1
%2</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Memoria</translation>
    </message>
    <message>
        <source>First localisation to remember</source>
        <translation>Prima posizione da ricordare</translation>
    </message>
    <message>
        <source>Second localisation</source>
        <translation>Seconda posizione</translation>
    </message>
    <message>
        <source>Third localisation</source>
        <translation>Terza posizione</translation>
    </message>
    <message>
        <source>Fourth and last localisation</source>
        <translation>Quarta e ultima posizione</translation>
    </message>
</context>
<context>
    <name>Test4Class</name>
    <message>
        <source>Test4</source>
        <translation>Test 4</translation>
    </message>
    <message>
        <source>First Cross ?</source>
        <translation>Prima croce?</translation>
    </message>
    <message>
        <source>Last Cross ?</source>
        <translation>Ultima croce?</translation>
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
        <translation>Numero</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Passo orizz.:</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Passo vert.:</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Compito:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N.:</translation>
    </message>
    <message>
        <source>Pos First :</source>
        <translation>Pos. prima:</translation>
    </message>
    <message>
        <source>Dist First :</source>
        <translation>Dist. prima:</translation>
    </message>
    <message>
        <source>Pos Last :</source>
        <translation>Pos. ultima:</translation>
    </message>
    <message>
        <source>Dist Last :</source>
        <translation>Dist. ultima:</translation>
    </message>
    <message>
        <source>GO</source>
        <translation>Inizia</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continua</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Risultati</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menu principale</translation>
    </message>
</context>
<context>
    <name>WebViewer</name>
    <message>
        <source>Unable to open file</source>
        <translation>Impossibile aprire il file</translation>
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
