<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>Assessor</name>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>No se puede abrir %1
%2</translation>
    </message>
</context>
<context>
    <name>AssessorClass</name>
    <message>
        <source>Assessor</source>
        <translation>Evaluador</translation>
    </message>
    <message>
        <source>Title :</source>
        <translation>Tratamiento:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Sr.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Sra.</translation>
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
        <translation>Apellidos:</translation>
    </message>
    <message>
        <source>First Name :</source>
        <translation>Nombre:</translation>
    </message>
    <message>
        <source>Institution :</source>
        <translation>Centro:</translation>
    </message>
    <message>
        <source>Street :</source>
        <translation>Calle:</translation>
    </message>
    <message>
        <source>Postal Code :</source>
        <translation>Código postal:</translation>
    </message>
    <message>
        <source>City :</source>
        <translation>Ciudad:</translation>
    </message>
    <message>
        <source>Country :</source>
        <translation>País:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>Calibration</name>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Please enter value in mm</source>
        <translation>Introduzca un valor en mm</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>No se puede abrir %1
%2</translation>
    </message>
    <message>
        <source>INSTRUCTIONS</source>
        <translation>INSTRUCCIONES</translation>
    </message>
    <message>
        <source>TRAINING</source>
        <translation>PRÁCTICA</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>PAUSA</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ERROR</translation>
    </message>
    <message>
        <source>This screen is too small: it has %1 by %2 pixels, and the lines need %3 by %4. A length measured here would be wrong. Choose a higher resolution or a smaller scaling of the desktop, and calibrate again.</source>
        <translation>Esta pantalla es demasiado pequeña: tiene %1 por %2 píxeles, y las líneas necesitan %3 por %4. Una longitud medida aquí sería errónea. Elija una resolución más alta o una escala menor de la pantalla y repita la calibración.</translation>
    </message>
</context>
<context>
    <name>CalibrationClass</name>
    <message>
        <source>Calibration</source>
        <translation>Calibración</translation>
    </message>
    <message>
        <source>Horizontal calibration
Enter the value of the line in mm :</source>
        <translation>Calibración horizontal
Longitud de la línea en mm:</translation>
    </message>
    <message>
        <source>Vertical calibration
Enter the value of the line in mm :</source>
        <translation>Calibración vertical
Longitud de la línea en mm:</translation>
    </message>
</context>
<context>
    <name>Kelmoran</name>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>No se puede abrir %1
%2</translation>
    </message>
    <message>
        <source>Kelmoran is already running with the same data folders.</source>
        <translation>Kelmoran ya está abierto con las mismas carpetas de datos.</translation>
    </message>
    <message>
        <source>Unable to find </source>
        <translation>No se encuentra: </translation>
    </message>
    <message>
        <source>Previous reports (*.pdf)</source>
        <translation>Informes anteriores (*.pdf)</translation>
    </message>
    <message>
        <source>Unable to open the file...</source>
        <translation>No se puede abrir el archivo...</translation>
    </message>
    <message>
        <source>This screen has %1 by %2 pixels. The tests need %3 by %4: parts of them are cut off.</source>
        <translation>Esta pantalla tiene %1 por %2 píxeles. Las pruebas necesitan %3 por %4: hay partes cortadas.</translation>
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
        <translation>Versión:</translation>
    </message>
    <message>
        <source>Assessor</source>
        <translation>Evaluador</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Institution</source>
        <translation>Centro</translation>
    </message>
    <message>
        <source>Patient Name :</source>
        <translation>Nombre del paciente:</translation>
    </message>
    <message>
        <source>Explains the task with examples first; chosen without training, it ends there and no test is run.</source>
        <translation>Explica primero la tarea con ejemplos; si no se elige también la práctica, todo acaba ahí y no se hace la prueba.</translation>
    </message>
    <message>
        <source>With instruction</source>
        <translation>Con instrucciones</translation>
    </message>
    <message>
        <source>Lets the patient practise each part of the task before the test.</source>
        <translation>Permite al paciente practicar cada parte de la tarea antes de la prueba.</translation>
    </message>
    <message>
        <source>With training</source>
        <translation>Con práctica</translation>
    </message>
    <message>
        <source>Gives every trial the same length and sets a time limit for the answer.</source>
        <translation>Da a todos los ensayos la misma duración y limita el tiempo de respuesta.</translation>
    </message>
    <message>
        <source>Fixed duration</source>
        <translation>Duración fija</translation>
    </message>
    <message>
        <source>Shows the parameters of the task and the result of each trial on the screen.</source>
        <translation>Muestra en la pantalla los parámetros de la tarea y el resultado de cada ensayo.</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Parámetros</translation>
    </message>
    <message>
        <source>Offers the three parts of the visual recognition task as tests of their own.</source>
        <translation>Ofrece por separado las tres partes de la tarea de reconocimiento visual.</translation>
    </message>
    <message>
        <source>Subtasks</source>
        <translation>Subtareas</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>Sesiones</translation>
    </message>
    <message>
        <source>Visual recognition task</source>
        <translation>Tarea de reconocimiento visual</translation>
    </message>
    <message>
        <source>Central cue attention task</source>
        <translation>Tarea de atención con señal central</translation>
    </message>
    <message>
        <source>Movement detection task</source>
        <translation>Tarea de detección del movimiento</translation>
    </message>
    <message>
        <source>Working memory task</source>
        <translation>Tarea de memoria de trabajo</translation>
    </message>
    <message>
        <source>Central visual perception</source>
        <translation>Percepción visual central</translation>
    </message>
    <message>
        <source>Peripheral visual perception</source>
        <translation>Percepción visual periférica</translation>
    </message>
    <message>
        <source>Dual task processing</source>
        <translation>Procesamiento en doble tarea</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Usuarios</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Informes</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>About Kelmoran</source>
        <translation>Acerca de Kelmoran</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Preferencias...</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Add patient...</source>
        <translation>Añadir paciente...</translation>
    </message>
    <message>
        <source>Assessor...</source>
        <translation>Evaluador...</translation>
    </message>
    <message>
        <source>Previous reports</source>
        <translation>Informes anteriores</translation>
    </message>
    <message>
        <source>Instruction book</source>
        <translation>Manual</translation>
    </message>
    <message>
        <source>Video instructions</source>
        <translation>Instrucciones en vídeo</translation>
    </message>
    <message>
        <source>Publications</source>
        <translation>Publicaciones</translation>
    </message>
    <message>
        <source>Choose the patient here. A new one is registered in the menu &quot;Users&quot;.</source>
        <translation>Elija aquí al paciente. Los pacientes nuevos se registran en el menú «Usuarios».</translation>
    </message>
    <message>
        <source>The latest session of this test. It counts only once the test has been completed.</source>
        <translation>La última sesión de esta prueba. Solo cuenta si la prueba se ha completado.</translation>
    </message>
</context>
<context>
    <name>NewPatientClass</name>
    <message>
        <source>NewPatient</source>
        <translation>Nuevo paciente</translation>
    </message>
    <message>
        <source>Gender :</source>
        <translation>Sexo:</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Sr.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Sra.</translation>
    </message>
    <message>
        <source>Last Name / study :</source>
        <translation>Apellidos / estudio:</translation>
    </message>
    <message>
        <source>First Name  / id :</source>
        <translation>Nombre / id.:</translation>
    </message>
    <message>
        <source>Date of birth :</source>
        <translation>Fecha de nacimiento:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>PreferencesClass</name>
    <message>
        <source>Preferences</source>
        <translation>Preferencias</translation>
    </message>
    <message>
        <source>Screen resolution :</source>
        <translation>Resolución de la pantalla:</translation>
    </message>
    <message>
        <source>X</source>
        <translation>×</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>píxeles</translation>
    </message>
    <message>
        <source>Horizontal pixel size :</source>
        <translation>Ancho de un píxel:</translation>
    </message>
    <message>
        <source>µm</source>
        <translation>µm</translation>
    </message>
    <message>
        <source>Vertical pixel size :</source>
        <translation>Alto de un píxel:</translation>
    </message>
    <message>
        <source>Screen frequency :</source>
        <translation>Frecuencia de la pantalla:</translation>
    </message>
    <message>
        <source>Re calibrate</source>
        <translation>Recalibrar</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>How many pictures a second the screen shows. The exposures of the visual recognition task follow from it.</source>
        <translation>Imágenes por segundo que muestra la pantalla. De ellas dependen los tiempos de exposición de la tarea de reconocimiento visual.</translation>
    </message>
    <message>
        <source>Measures the pixels anew, with a ruler. Needed after a change of screen, resolution or scaling.</source>
        <translation>Vuelve a medir los píxeles con una regla. Hay que hacerlo si cambian la pantalla, la resolución o la escala.</translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message>
        <source>The report could not be printed.</source>
        <translation>No se ha podido imprimir el informe.</translation>
    </message>
    <message>
        <source>The report could not be loaded.</source>
        <translation>No se ha podido cargar el informe.</translation>
    </message>
</context>
<context>
    <name>Result</name>
    <message>
        <source>Unable to open file</source>
        <translation>No se puede abrir el archivo</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>No se puede abrir %1
%2</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Imprimir documento</translation>
    </message>
</context>
<context>
    <name>ResultClass</name>
    <message>
        <source>Result</source>
        <translation>Resultado</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Imprimir documento</translation>
    </message>
</context>
<context>
    <name>TaskDialog</name>
    <message>
        <source>At worst a picture came %L1 ms late. Which trials: Results/timing.csv</source>
        <translation>En el peor de los casos, una imagen llegó %L1 ms tarde. Ensayos afectados: Results/timing.csv</translation>
    </message>
</context>
<context>
    <name>Test1</name>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>No se puede abrir %1
%2</translation>
    </message>
    <message>
        <source>Visual
recognition</source>
        <translation>Reconocimiento
visual</translation>
    </message>
    <message>
        <source>Central
vision</source>
        <translation>Visión
central</translation>
    </message>
    <message>
        <source>Peripheral
vision</source>
        <translation>Visión
periférica</translation>
    </message>
    <message>
        <source>Dual task</source>
        <translation>Doble tarea</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Ejemplo</translation>
    </message>
    <message>
        <source>Unable to start!
Please undergo training!</source>
        <translation>¡No se puede empezar!
¡Primero es necesaria la práctica!</translation>
    </message>
    <message>
        <source>Unstable measures, please start task over again</source>
        <translation>Medidas inestables, vuelva a empezar la tarea</translation>
    </message>
    <message>
        <source>Exposure time &gt; 4633ms
Check visual fields and
start training over again for this subtask</source>
        <translation>Tiempo de exposición &gt; 4633&#xa0;ms
Compruebe los campos visuales y
reinicie la práctica de esta subtarea</translation>
    </message>
</context>
<context>
    <name>Test1Class</name>
    <message>
        <source>Test1</source>
        <translation>Prueba 1</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Número</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N.º:</translation>
    </message>
    <message>
        <source>NoS1 :</source>
        <translation>N.ºS1:</translation>
    </message>
    <message>
        <source>NoS2 :</source>
        <translation>N.ºS2:</translation>
    </message>
    <message>
        <source>NoS3 :</source>
        <translation>N.ºS3:</translation>
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
        <translation>Resultado:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Subtarea:</translation>
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
        <translation>Tam. global</translation>
    </message>
    <message>
        <source>Shape</source>
        <translation>Forma</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Contraste</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Orientación</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Separación</translation>
    </message>
    <message>
        <source>Tri Size</source>
        <translation>Tam. tri.</translation>
    </message>
    <message>
        <source>Tri Ratio</source>
        <translation>Razón tri.</translation>
    </message>
    <message>
        <source>Tri Offset</source>
        <translation>Distancia tri.</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Dur. ciclo:</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Tarea:</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Paso horiz.:</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Paso vert.:</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Máscara</translation>
    </message>
    <message>
        <source>Identical</source>
        <translation>Iguales</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>Arriba a la izquierda</translation>
    </message>
    <message>
        <source>Middle left</source>
        <translation>En medio a la izquierda</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Abajo a la izquierda</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Arriba a la derecha</translation>
    </message>
    <message>
        <source>Middle right</source>
        <translation>En medio a la derecha</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Abajo a la derecha</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Empezar</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Siguiente</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Resultados</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menú principal</translation>
    </message>
</context>
<context>
    <name>Test2</name>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>No se puede abrir %1
%2</translation>
    </message>
    <message>
        <source>Attention
neutral</source>
        <translation>Atención
neutra</translation>
    </message>
    <message>
        <source>Attention
alerted</source>
        <translation>Atención
con alerta</translation>
    </message>
    <message>
        <source>Attention
oriented</source>
        <translation>Atención
orientada</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Ejemplo</translation>
    </message>
</context>
<context>
    <name>Test2Class</name>
    <message>
        <source>Test2</source>
        <translation>Prueba 2</translation>
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
        <translation>Número</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Tarea:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Subtarea:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Paso:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Dur. ciclo:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N.º:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Resultado:</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta:</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Empezar</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Siguiente</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Resultados</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menú principal</translation>
    </message>
</context>
<context>
    <name>Test3</name>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>No se puede abrir %1
%2</translation>
    </message>
    <message>
        <source>Movement
detection</source>
        <translation>Detección
del movimiento</translation>
    </message>
</context>
<context>
    <name>Test3Class</name>
    <message>
        <source>Test3</source>
        <translation>Prueba 3</translation>
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
        <translation>Número</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Tarea:</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Subtarea:</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Paso:</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Dur. ciclo:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N.º:</translation>
    </message>
    <message>
        <source>Elapsed :</source>
        <translation>Transcurrido:</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Resultado:</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta:</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Derecha</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Abajo</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Izquierda</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Arriba</translation>
    </message>
    <message>
        <source>Don&apos;t know</source>
        <translation>No sé</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Empezar</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Siguiente</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Resultados</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menú principal</translation>
    </message>
</context>
<context>
    <name>Test4</name>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>No se puede abrir %1
%2</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Memoria</translation>
    </message>
    <message>
        <source>First localisation to remember</source>
        <translation>Primera posición que recordar</translation>
    </message>
    <message>
        <source>Second localisation</source>
        <translation>Segunda posición</translation>
    </message>
    <message>
        <source>Third localisation</source>
        <translation>Tercera posición</translation>
    </message>
    <message>
        <source>Fourth and last localisation</source>
        <translation>Cuarta y última posición</translation>
    </message>
</context>
<context>
    <name>Test4Class</name>
    <message>
        <source>Test4</source>
        <translation>Prueba 4</translation>
    </message>
    <message>
        <source>First Cross ?</source>
        <translation>¿Primera cruz?</translation>
    </message>
    <message>
        <source>Last Cross ?</source>
        <translation>¿Última cruz?</translation>
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
        <translation>Número</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Paso horiz.:</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Paso vert.:</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Tarea:</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>N.º:</translation>
    </message>
    <message>
        <source>Pos First :</source>
        <translation>Pos. primera:</translation>
    </message>
    <message>
        <source>Dist First :</source>
        <translation>Dist. primera:</translation>
    </message>
    <message>
        <source>Pos Last :</source>
        <translation>Pos. última:</translation>
    </message>
    <message>
        <source>Dist Last :</source>
        <translation>Dist. última:</translation>
    </message>
    <message>
        <source>GO</source>
        <translation>Empezar</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Resultados</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Menú principal</translation>
    </message>
</context>
<context>
    <name>WebViewer</name>
    <message>
        <source>Unable to open file</source>
        <translation>No se puede abrir el archivo</translation>
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
