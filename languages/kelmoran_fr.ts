<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>Assessor</name>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossible d’ouvrir %1
%2</translation>
    </message>
</context>
<context>
    <name>AssessorClass</name>
    <message>
        <source>Assessor</source>
        <translation>Examinateur</translation>
    </message>
    <message>
        <source>Title :</source>
        <translation>Titre&#xa0;:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>M.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Mme</translation>
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
        <translation>Nom&#xa0;:</translation>
    </message>
    <message>
        <source>First Name :</source>
        <translation>Prénom&#xa0;:</translation>
    </message>
    <message>
        <source>Institution :</source>
        <translation>Établissement&#xa0;:</translation>
    </message>
    <message>
        <source>Street :</source>
        <translation>Rue&#xa0;:</translation>
    </message>
    <message>
        <source>Postal Code :</source>
        <translation>Code postal&#xa0;:</translation>
    </message>
    <message>
        <source>City :</source>
        <translation>Ville&#xa0;:</translation>
    </message>
    <message>
        <source>Country :</source>
        <translation>Pays&#xa0;:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>Calibration</name>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Please enter value in mm</source>
        <translation>Veuillez saisir une valeur en mm</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossible d’ouvrir %1
%2</translation>
    </message>
    <message>
        <source>INSTRUCTIONS</source>
        <translation>CONSIGNES</translation>
    </message>
    <message>
        <source>TRAINING</source>
        <translation>ENTRAÎNEMENT</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>PAUSE</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ERREUR</translation>
    </message>
    <message>
        <source>This screen is too small: it has %1 by %2 pixels, and the lines need %3 by %4. A length measured here would be wrong. Choose a higher resolution or a smaller scaling of the desktop, and calibrate again.</source>
        <translation>Cet écran est trop petit&#xa0;: il a %1 sur %2 pixels, et les lignes en demandent %3 sur %4. Une longueur mesurée ici serait fausse. Choisissez une résolution plus haute ou une échelle plus petite de l’affichage, puis refaites le calibrage.</translation>
    </message>
</context>
<context>
    <name>CalibrationClass</name>
    <message>
        <source>Calibration</source>
        <translation>Calibrage</translation>
    </message>
    <message>
        <source>Horizontal calibration
Enter the value of the line in mm :</source>
        <translation>Calibrage horizontal
Longueur de la ligne en mm&#xa0;:</translation>
    </message>
    <message>
        <source>Vertical calibration
Enter the value of the line in mm :</source>
        <translation>Calibrage vertical
Longueur de la ligne en mm&#xa0;:</translation>
    </message>
</context>
<context>
    <name>Kelmoran</name>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossible d’ouvrir %1
%2</translation>
    </message>
    <message>
        <source>Kelmoran is already running with the same data folders.</source>
        <translation>Kelmoran est déjà ouvert avec les mêmes dossiers de données.</translation>
    </message>
    <message>
        <source>Unable to find </source>
        <translation>Introuvable&#xa0;: </translation>
    </message>
    <message>
        <source>Previous reports (*.pdf)</source>
        <translation>Rapports précédents (*.pdf)</translation>
    </message>
    <message>
        <source>Unable to open the file...</source>
        <translation>Impossible d’ouvrir le fichier…</translation>
    </message>
    <message>
        <source>This screen has %1 by %2 pixels. The tests need %3 by %4: parts of them are cut off.</source>
        <translation>Cet écran a %1 sur %2 pixels. Les tests en demandent %3 sur %4&#xa0;: des parties sont coupées.</translation>
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
        <translation>Version&#xa0;:</translation>
    </message>
    <message>
        <source>Assessor</source>
        <translation>Examinateur</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Institution</source>
        <translation>Établissement</translation>
    </message>
    <message>
        <source>Patient Name :</source>
        <translation>Nom du patient&#xa0;:</translation>
    </message>
    <message>
        <source>Explains the task with examples first; chosen without training, it ends there and no test is run.</source>
        <translation>Explique d’abord la tâche par des exemples&#xa0;; sans l’entraînement, tout s’arrête là et aucun test n’a lieu.</translation>
    </message>
    <message>
        <source>With instruction</source>
        <translation>Avec consignes</translation>
    </message>
    <message>
        <source>Lets the patient practise each part of the task before the test.</source>
        <translation>Laisse le patient s’exercer à chaque partie de la tâche avant le test.</translation>
    </message>
    <message>
        <source>With training</source>
        <translation>Avec entraînement</translation>
    </message>
    <message>
        <source>Gives every trial the same length and sets a time limit for the answer.</source>
        <translation>Donne à tous les essais la même durée et limite le temps de réponse.</translation>
    </message>
    <message>
        <source>Fixed duration</source>
        <translation>Durée fixe</translation>
    </message>
    <message>
        <source>Shows the parameters of the task and the result of each trial on the screen.</source>
        <translation>Affiche à l’écran les paramètres de la tâche et le résultat de chaque essai.</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Offers the three parts of the visual recognition task as tests of their own.</source>
        <translation>Propose séparément les trois parties de la tâche de reconnaissance visuelle.</translation>
    </message>
    <message>
        <source>Subtasks</source>
        <translation>Sous-tâches</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>Séances</translation>
    </message>
    <message>
        <source>Visual recognition task</source>
        <translation>Tâche de reconnaissance visuelle</translation>
    </message>
    <message>
        <source>Central cue attention task</source>
        <translation>Tâche d’attention à indice central</translation>
    </message>
    <message>
        <source>Movement detection task</source>
        <translation>Tâche de détection du mouvement</translation>
    </message>
    <message>
        <source>Working memory task</source>
        <translation>Tâche de mémoire de travail</translation>
    </message>
    <message>
        <source>Central visual perception</source>
        <translation>Perception visuelle centrale</translation>
    </message>
    <message>
        <source>Peripheral visual perception</source>
        <translation>Perception visuelle périphérique</translation>
    </message>
    <message>
        <source>Dual task processing</source>
        <translation>Traitement en double tâche</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Utilisateurs</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archives</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>About Kelmoran</source>
        <translation>À propos de Kelmoran</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Préférences...</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Add patient...</source>
        <translation>Ajouter un patient...</translation>
    </message>
    <message>
        <source>Assessor...</source>
        <translation>Examinateur...</translation>
    </message>
    <message>
        <source>Previous reports</source>
        <translation>Comptes rendus antérieurs</translation>
    </message>
    <message>
        <source>Instruction book</source>
        <translation>Mode d’emploi</translation>
    </message>
    <message>
        <source>Video instructions</source>
        <translation>Consignes en vidéo</translation>
    </message>
    <message>
        <source>Publications</source>
        <translation>Publications</translation>
    </message>
    <message>
        <source>Choose the patient here. A new one is registered in the menu &quot;Users&quot;.</source>
        <translation>Choisissez ici le patient. Un nouveau patient s’enregistre dans le menu « Utilisateurs ».</translation>
    </message>
    <message>
        <source>The latest session of this test. It counts only once the test has been completed.</source>
        <translation>Dernière séance de ce test. Elle ne compte que si le test a été mené à son terme.</translation>
    </message>
</context>
<context>
    <name>NewPatientClass</name>
    <message>
        <source>NewPatient</source>
        <translation>Nouveau patient</translation>
    </message>
    <message>
        <source>Gender :</source>
        <translation>Sexe&#xa0;:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>M.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Mme</translation>
    </message>
    <message>
        <source>Last Name / study :</source>
        <translation>Nom / étude&#xa0;:</translation>
    </message>
    <message>
        <source>First Name  / id :</source>
        <translation>Prénom / id.&#xa0;:</translation>
    </message>
    <message>
        <source>Date of birth :</source>
        <translation>Date de naissance&#xa0;:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>PreferencesClass</name>
    <message>
        <source>Preferences</source>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>Screen resolution :</source>
        <translation>Résolution de l’écran&#xa0;:</translation>
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
        <translation>Largeur d’un pixel&#xa0;:</translation>
    </message>
    <message>
        <source>µm</source>
        <translation>µm</translation>
    </message>
    <message>
        <source>Vertical pixel size :</source>
        <translation>Hauteur d’un pixel&#xa0;:</translation>
    </message>
    <message>
        <source>Screen frequency :</source>
        <translation>Fréquence de l’écran&#xa0;:</translation>
    </message>
    <message>
        <source>Re calibrate</source>
        <translation>Recalibrer</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>How many pictures a second the screen shows. The exposures of the visual recognition task follow from it.</source>
        <translation>Nombre d’images que l’écran affiche par seconde. Les temps d’exposition de la tâche de reconnaissance visuelle en dépendent.</translation>
    </message>
    <message>
        <source>Measures the pixels anew, with a ruler. Needed after a change of screen, resolution or scaling.</source>
        <translation>Mesure de nouveau les pixels à l’aide d’une règle. À faire après tout changement d’écran, de résolution ou d’échelle d’affichage.</translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message>
        <source>The report could not be printed.</source>
        <translation>Le compte rendu n’a pas pu être imprimé.</translation>
    </message>
    <message>
        <source>The report could not be loaded.</source>
        <translation>Le compte rendu n’a pas pu être chargé.</translation>
    </message>
</context>
<context>
    <name>Result</name>
    <message>
        <source>Unable to open file</source>
        <translation>Impossible d’ouvrir le fichier</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossible d’ouvrir %1
%2</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Imprimer le document</translation>
    </message>
</context>
<context>
    <name>ResultClass</name>
    <message>
        <source>Result</source>
        <translation>Résultat</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Imprimer le document</translation>
    </message>
</context>
<context>
    <name>TaskDialog</name>
    <message>
        <source>At worst a picture came %L1 ms late. Which trials: Results/timing.csv</source>
        <translation>Au pire, une image est arrivée avec %L1 ms de retard. Essais concernés : Results/timing.csv</translation>
    </message>
</context>
<context>
    <name>Test1</name>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossible d’ouvrir %1
%2</translation>
    </message>
    <message>
        <source>Visual
recognition</source>
        <translation>Reconnaissance
visuelle</translation>
    </message>
    <message>
        <source>Central
vision</source>
        <translation>Vision
centrale</translation>
    </message>
    <message>
        <source>Peripheral
vision</source>
        <translation>Vision
périphérique</translation>
    </message>
    <message>
        <source>Dual task</source>
        <translation>Double tâche</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Exemple</translation>
    </message>
    <message>
        <source>Unable to start!
Please undergo training!</source>
        <translation>Impossible de commencer&#xa0;!
Un entraînement est d’abord nécessaire&#xa0;!</translation>
    </message>
    <message>
        <source>Unstable measures, please start task over again</source>
        <translation>Mesures instables, veuillez recommencer la tâche</translation>
    </message>
    <message>
        <source>Exposure time &gt; 4633ms
Check visual fields and
start training over again for this subtask</source>
        <translation>Temps d’exposition &gt; 4633&#xa0;ms
Vérifiez les champs visuels et
recommencez l’entraînement de cette sous-tâche</translation>
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
        <translation>Nombre</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N°&#xa0;:</translation>
    </message>
    <message>
        <source>NoS1 :</source>
        <translation>N°S1&#xa0;:</translation>
    </message>
    <message>
        <source>NoS2 :</source>
        <translation>N°S2&#xa0;:</translation>
    </message>
    <message>
        <source>NoS3 :</source>
        <translation>N°S3&#xa0;:</translation>
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
        <translation>Résultat&#xa0;:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Sous-tâche&#xa0;:</translation>
    </message>
    <message>
        <source>Timer_01</source>
        <translation>Timer_01</translation>
    </message>
    <message>
        <source>Timer_03 :</source>
        <translation>Timer_03&#xa0;:</translation>
    </message>
    <message>
        <source>Timer_04 :</source>
        <translation>Timer_04&#xa0;:</translation>
    </message>
    <message>
        <source>Timer_RT</source>
        <translation>Timer_RT</translation>
    </message>
    <message>
        <source>Timer_06 :</source>
        <translation>Timer_06&#xa0;:</translation>
    </message>
    <message>
        <source>Global Size</source>
        <translation>Taille glob.</translation>
    </message>
    <message>
        <source>Shape</source>
        <translation>Forme</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Contraste</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Orientation</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Taille</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Écart</translation>
    </message>
    <message>
        <source>Tri Size</source>
        <translation>Taille tri.</translation>
    </message>
    <message>
        <source>Tri Ratio</source>
        <translation>Rapport tri.</translation>
    </message>
    <message>
        <source>Tri Offset</source>
        <translation>Distance tri.</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Durée cycle&#xa0;:</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Tâche&#xa0;:</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Pas horiz.&#xa0;:</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Pas vert.&#xa0;:</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Masque</translation>
    </message>
    <message>
        <source>Identical</source>
        <translation>Identiques</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>En haut à gauche</translation>
    </message>
    <message>
        <source>Middle left</source>
        <translation>Au milieu à gauche</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>En bas à gauche</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>En haut à droite</translation>
    </message>
    <message>
        <source>Middle right</source>
        <translation>Au milieu à droite</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>En bas à droite</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Démarrer</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Suivant</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Résultats</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menu principal</translation>
    </message>
</context>
<context>
    <name>Test2</name>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossible d’ouvrir %1
%2</translation>
    </message>
    <message>
        <source>Attention
neutral</source>
        <translation>Attention
neutre</translation>
    </message>
    <message>
        <source>Attention
alerted</source>
        <translation>Attention
avec alerte</translation>
    </message>
    <message>
        <source>Attention
oriented</source>
        <translation>Attention
orientée</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Exemple</translation>
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
        <translation>Astérisque</translation>
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
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Tâche&#xa0;:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Sous-tâche&#xa0;:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Pas&#xa0;:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Durée cycle&#xa0;:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N°&#xa0;:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Résultat&#xa0;:</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta&#xa0;:</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Démarrer</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Suivant</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Résultats</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menu principal</translation>
    </message>
</context>
<context>
    <name>Test3</name>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossible d’ouvrir %1
%2</translation>
    </message>
    <message>
        <source>Movement
detection</source>
        <translation>Détection
du mouvement</translation>
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
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Tâche&#xa0;:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Sous-tâche&#xa0;:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Pas&#xa0;:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Durée cycle&#xa0;:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N°&#xa0;:</translation>
    </message>
    <message>
        <source>Elapsed :</source>
        <translation>Écoulé&#xa0;:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Résultat&#xa0;:</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta&#xa0;:</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Droite</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Bas</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Gauche</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Haut</translation>
    </message>
    <message>
        <source>Don&apos;t know</source>
        <translation>Je ne sais pas</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Démarrer</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Suivant</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Résultats</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menu principal</translation>
    </message>
</context>
<context>
    <name>Test4</name>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Impossible d’ouvrir %1
%2</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Mémoire</translation>
    </message>
    <message>
        <source>First localisation to remember</source>
        <translation>Premier emplacement à retenir</translation>
    </message>
    <message>
        <source>Second localisation</source>
        <translation>Deuxième emplacement</translation>
    </message>
    <message>
        <source>Third localisation</source>
        <translation>Troisième emplacement</translation>
    </message>
    <message>
        <source>Fourth and last localisation</source>
        <translation>Quatrième et dernier emplacement</translation>
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
        <translation>Première croix&#xa0;?</translation>
    </message>
    <message>
        <source>Last Cross ?</source>
        <translation>Dernière croix&#xa0;?</translation>
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
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Pas horiz.&#xa0;:</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Pas vert.&#xa0;:</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Tâche&#xa0;:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N°&#xa0;:</translation>
    </message>
    <message>
        <source>Pos First :</source>
        <translation>Pos. 1re&#xa0;:</translation>
    </message>
    <message>
        <source>Dist First :</source>
        <translation>Dist. 1re&#xa0;:</translation>
    </message>
    <message>
        <source>Pos Last :</source>
        <translation>Pos. dern.&#xa0;:</translation>
    </message>
    <message>
        <source>Dist Last :</source>
        <translation>Dist. dern.&#xa0;:</translation>
    </message>
    <message>
        <source>GO</source>
        <translation>Démarrer</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Résultats</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menu principal</translation>
    </message>
</context>
<context>
    <name>WebViewer</name>
    <message>
        <source>Unable to open file</source>
        <translation>Impossible d’ouvrir le fichier</translation>
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
