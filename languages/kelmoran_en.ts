<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Assessor</name>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Failed to open %1
%2</translation>
    </message>
</context>
<context>
    <name>AssessorClass</name>
    <message>
        <source>Assessor</source>
        <translation>Assessor</translation>
    </message>
    <message>
        <source>Title :</source>
        <translation>Title :</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Mr.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Mrs.</translation>
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
        <translation>Last Name :</translation>
    </message>
    <message>
        <source>First Name :</source>
        <translation>First Name :</translation>
    </message>
    <message>
        <source>Institution :</source>
        <translation>Institution :</translation>
    </message>
    <message>
        <source>Street :</source>
        <translation>Street :</translation>
    </message>
    <message>
        <source>Postal Code :</source>
        <translation>Postal Code :</translation>
    </message>
    <message>
        <source>City :</source>
        <translation>City :</translation>
    </message>
    <message>
        <source>Country :</source>
        <translation>Country :</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
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
        <translation>Please enter value in mm</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Failed to open %1
%2</translation>
    </message>
    <message>
        <source>INSTRUCTIONS</source>
        <translation>INSTRUCTIONS</translation>
    </message>
    <message>
        <source>TRAINING</source>
        <translation>TRAINING</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>PAUSE</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ERROR</translation>
    </message>
    <message>
        <source>This screen is too small: it has %1 by %2 pixels, and the lines need %3 by %4. A length measured here would be wrong. Choose a higher resolution or a smaller scaling of the desktop, and calibrate again.</source>
        <translation>This screen is too small: it has %1 by %2 pixels, and the lines need %3 by %4. A length measured here would be wrong. Choose a higher resolution or a smaller scaling of the desktop, and calibrate again.</translation>
    </message>
</context>
<context>
    <name>CalibrationClass</name>
    <message>
        <source>Calibration</source>
        <translation>Calibration</translation>
    </message>
    <message>
        <source>Horizontal calibration
Enter the value of the line in mm :</source>
        <translation>Horizontal calibration
Enter the value of the line in mm :</translation>
    </message>
    <message>
        <source>Vertical calibration
Enter the value of the line in mm :</source>
        <translation>Vertical calibration
Enter the value of the line in mm :</translation>
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
        <translation>Failed to open %1
%2</translation>
    </message>
    <message>
        <source>Kelmoran is already running with the same data folders.</source>
        <translation>Kelmoran is already running with the same data folders.</translation>
    </message>
    <message>
        <source>Unable to find </source>
        <translation>Unable to find </translation>
    </message>
    <message>
        <source>Previous reports (*.pdf)</source>
        <translation>Previous reports (*.pdf)</translation>
    </message>
    <message>
        <source>Unable to open the file...</source>
        <translation>Unable to open the file...</translation>
    </message>
    <message>
        <source>This screen has %1 by %2 pixels. The tests need %3 by %4: parts of them are cut off.</source>
        <translation>This screen has %1 by %2 pixels. The tests need %3 by %4: parts of them are cut off.</translation>
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
        <translation>Version :</translation>
    </message>
    <message>
        <source>Assessor</source>
        <translation>Assessor</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Institution</source>
        <translation>Institution</translation>
    </message>
    <message>
        <source>Patient Name :</source>
        <translation>Patient Name :</translation>
    </message>
    <message>
        <source>Explains the task with examples first; chosen without training, it ends there and no test is run.</source>
        <translation>Explains the task with examples first; chosen without training, it ends there and no test is run.</translation>
    </message>
    <message>
        <source>With instruction</source>
        <translation>With instruction</translation>
    </message>
    <message>
        <source>Lets the patient practise each part of the task before the test.</source>
        <translation>Lets the patient practise each part of the task before the test.</translation>
    </message>
    <message>
        <source>With training</source>
        <translation>With training</translation>
    </message>
    <message>
        <source>Gives every trial the same length and sets a time limit for the answer.</source>
        <translation>Gives every trial the same length and sets a time limit for the answer.</translation>
    </message>
    <message>
        <source>Fixed duration</source>
        <translation>Fixed duration</translation>
    </message>
    <message>
        <source>Shows the parameters of the task and the result of each trial on the screen.</source>
        <translation>Shows the parameters of the task and the result of each trial on the screen.</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>Offers the three parts of the visual recognition task as tests of their own.</source>
        <translation>Offers the three parts of the visual recognition task as tests of their own.</translation>
    </message>
    <message>
        <source>Subtasks</source>
        <translation>Subtasks</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>Sessions</translation>
    </message>
    <message>
        <source>Visual recognition task</source>
        <translation>Visual recognition task</translation>
    </message>
    <message>
        <source>Central cue attention task</source>
        <translation>Central cue attention task</translation>
    </message>
    <message>
        <source>Movement detection task</source>
        <translation>Movement detection task</translation>
    </message>
    <message>
        <source>Working memory task</source>
        <translation>Working memory task</translation>
    </message>
    <message>
        <source>Central visual perception</source>
        <translation>Central visual perception</translation>
    </message>
    <message>
        <source>Peripheral visual perception</source>
        <translation>Peripheral visual perception</translation>
    </message>
    <message>
        <source>Dual task processing</source>
        <translation>Dual task processing</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Users</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>Archive</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>About Kelmoran</source>
        <translation>About Kelmoran</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>Preferences...</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Exit</translation>
    </message>
    <message>
        <source>Add patient...</source>
        <translation>Add patient...</translation>
    </message>
    <message>
        <source>Assessor...</source>
        <translation>Assessor...</translation>
    </message>
    <message>
        <source>Previous reports</source>
        <translation>Previous reports</translation>
    </message>
    <message>
        <source>Instruction book</source>
        <translation>Instruction book</translation>
    </message>
    <message>
        <source>Video instructions</source>
        <translation>Video instructions</translation>
    </message>
    <message>
        <source>Publications</source>
        <translation>Publications</translation>
    </message>
    <message>
        <source>Choose the patient here. A new one is registered in the menu &quot;Users&quot;.</source>
        <translation>Choose the patient here. A new one is registered in the menu &quot;Users&quot;.</translation>
    </message>
    <message>
        <source>The latest session of this test. It counts only once the test has been completed.</source>
        <translation>The latest session of this test. It counts only once the test has been completed.</translation>
    </message>
</context>
<context>
    <name>NewPatientClass</name>
    <message>
        <source>NewPatient</source>
        <translation>NewPatient</translation>
    </message>
    <message>
        <source>Gender :</source>
        <translation>Gender :</translation>
    </message>
    <message>
        <source>Mr.</source>
        <translation>Mr.</translation>
    </message>
    <message>
        <source>Mrs.</source>
        <translation>Mrs.</translation>
    </message>
    <message>
        <source>Last Name / study :</source>
        <translation>Last Name / study :</translation>
    </message>
    <message>
        <source>First Name  / id :</source>
        <translation>First Name  / id :</translation>
    </message>
    <message>
        <source>Date of birth :</source>
        <translation>Date of birth :</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>PreferencesClass</name>
    <message>
        <source>Preferences</source>
        <translation>Preferences</translation>
    </message>
    <message>
        <source>Screen resolution :</source>
        <translation>Screen resolution :</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>pixels</source>
        <translation>pixels</translation>
    </message>
    <message>
        <source>Horizontal pixel size :</source>
        <translation>Horizontal pixel size :</translation>
    </message>
    <message>
        <source>µm</source>
        <translation>µm</translation>
    </message>
    <message>
        <source>Vertical pixel size :</source>
        <translation>Vertical pixel size :</translation>
    </message>
    <message>
        <source>Screen frequency :</source>
        <translation>Screen frequency :</translation>
    </message>
    <message>
        <source>Re calibrate</source>
        <translation>Re calibrate</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>How many pictures a second the screen shows. The exposures of the visual recognition task follow from it.</source>
        <translation>How many pictures a second the screen shows. The exposures of the visual recognition task follow from it.</translation>
    </message>
    <message>
        <source>Measures the pixels anew, with a ruler. Needed after a change of screen, resolution or scaling.</source>
        <translation>Measures the pixels anew, with a ruler. Needed after a change of screen, resolution or scaling.</translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message>
        <source>The report could not be printed.</source>
        <translation>The report could not be printed.</translation>
    </message>
    <message>
        <source>The report could not be loaded.</source>
        <translation>The report could not be loaded.</translation>
    </message>
</context>
<context>
    <name>Result</name>
    <message>
        <source>Unable to open file</source>
        <translation>Unable to open file</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Failed to open %1
%2</source>
        <translation>Failed to open %1
%2</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Print Document</translation>
    </message>
</context>
<context>
    <name>ResultClass</name>
    <message>
        <source>Result</source>
        <translation>Result</translation>
    </message>
    <message>
        <source>Print Document</source>
        <translation>Print Document</translation>
    </message>
</context>
<context>
    <name>TaskDialog</name>
    <message>
        <source>At worst a picture came %L1 ms late. Which trials: Results/timing.csv</source>
        <translation>At worst a picture came %L1 ms late. Which trials: Results/timing.csv</translation>
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
        <translation>Failed to open %1
%2</translation>
    </message>
    <message>
        <source>Visual
recognition</source>
        <translation>Visual
recognition</translation>
    </message>
    <message>
        <source>Central
vision</source>
        <translation>Central
vision</translation>
    </message>
    <message>
        <source>Peripheral
vision</source>
        <translation>Peripheral
vision</translation>
    </message>
    <message>
        <source>Dual task</source>
        <translation>Dual task</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Example</translation>
    </message>
    <message>
        <source>Unable to start!
Please undergo training!</source>
        <translation>Unable to start!
Please undergo training!</translation>
    </message>
    <message>
        <source>Unstable measures, please start task over again</source>
        <translation>Unstable measures, please start task over again</translation>
    </message>
    <message>
        <source>Exposure time &gt; 4633ms
Check visual fields and
start training over again for this subtask</source>
        <translation>Exposure time &gt; 4633ms
Check visual fields and
start training over again for this subtask</translation>
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
        <translation>Number</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>No :</translation>
    </message>
    <message>
        <source>NoS1 :</source>
        <translation>NoS1 :</translation>
    </message>
    <message>
        <source>NoS2 :</source>
        <translation>NoS2 :</translation>
    </message>
    <message>
        <source>NoS3 :</source>
        <translation>NoS3 :</translation>
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
        <translation>Result :</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Subtask :</translation>
    </message>
    <message>
        <source>Timer_01</source>
        <translation>Timer_01</translation>
    </message>
    <message>
        <source>Timer_03 :</source>
        <translation>Timer_03 :</translation>
    </message>
    <message>
        <source>Timer_04 :</source>
        <translation>Timer_04 :</translation>
    </message>
    <message>
        <source>Timer_RT</source>
        <translation>Timer_RT</translation>
    </message>
    <message>
        <source>Timer_06 :</source>
        <translation>Timer_06 :</translation>
    </message>
    <message>
        <source>Global Size</source>
        <translation>Global Size</translation>
    </message>
    <message>
        <source>Shape</source>
        <translation>Shape</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Contrast</translation>
    </message>
    <message>
        <source>Orientation</source>
        <translation>Orientation</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Separator</translation>
    </message>
    <message>
        <source>Tri Size</source>
        <translation>Tri Size</translation>
    </message>
    <message>
        <source>Tri Ratio</source>
        <translation>Tri Ratio</translation>
    </message>
    <message>
        <source>Tri Offset</source>
        <translation>Tri Offset</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Time Cycle :</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Task :</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Horz pitch :</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Vert pitch :</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Mask</translation>
    </message>
    <message>
        <source>Identical</source>
        <translation>Identical</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>Top left</translation>
    </message>
    <message>
        <source>Middle left</source>
        <translation>Middle left</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Bottom left</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Top right</translation>
    </message>
    <message>
        <source>Middle right</source>
        <translation>Middle right</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Bottom right</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Go</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continue</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Main Menu</translation>
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
        <translation>Failed to open %1
%2</translation>
    </message>
    <message>
        <source>Attention
neutral</source>
        <translation>Attention
neutral</translation>
    </message>
    <message>
        <source>Attention
alerted</source>
        <translation>Attention
alerted</translation>
    </message>
    <message>
        <source>Attention
oriented</source>
        <translation>Attention
oriented</translation>
    </message>
    <message>
        <source>Example</source>
        <translation>Example</translation>
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
        <translation>Asterisk</translation>
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
        <translation>Number</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Task :</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Subtask :</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Pitch :</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Time Cycle :</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>No :</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Result :</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta :</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Go</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continue</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Main Menu</translation>
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
        <translation>Failed to open %1
%2</translation>
    </message>
    <message>
        <source>Movement
detection</source>
        <translation>Movement
detection</translation>
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
        <translation>Timer Mov</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Number</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Task :</translation>
    </message>
    <message>
        <source>Subtask :</source>
        <translation>Subtask :</translation>
    </message>
    <message>
        <source>Pitch :</source>
        <translation>Pitch :</translation>
    </message>
    <message>
        <source>Time Cycle :</source>
        <translation>Time Cycle :</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>No :</translation>
    </message>
    <message>
        <source>Elapsed :</source>
        <translation>Elapsed :</translation>
    </message>
    <message>
        <source>Result :</source>
        <translation>Result :</translation>
    </message>
    <message>
        <source>RT_delta :</source>
        <translation>RT_delta :</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>Don&apos;t know</source>
        <translation>Don&apos;t know</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Go</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continue</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Main Menu</translation>
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
        <translation>Failed to open %1
%2</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Memory</translation>
    </message>
    <message>
        <source>First localisation to remember</source>
        <translation>First localisation to remember</translation>
    </message>
    <message>
        <source>Second localisation</source>
        <translation>Second localisation</translation>
    </message>
    <message>
        <source>Third localisation</source>
        <translation>Third localisation</translation>
    </message>
    <message>
        <source>Fourth and last localisation</source>
        <translation>Fourth and last localisation</translation>
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
        <translation>First Cross ?</translation>
    </message>
    <message>
        <source>Last Cross ?</source>
        <translation>Last Cross ?</translation>
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
        <translation>Number</translation>
    </message>
    <message>
        <source>Horz pitch :</source>
        <translation>Horz pitch :</translation>
    </message>
    <message>
        <source>Vert pitch :</source>
        <translation>Vert pitch :</translation>
    </message>
    <message>
        <source>Task :</source>
        <translation>Task :</translation>
    </message>
    <message>
        <source>No :</source>
        <translation>No :</translation>
    </message>
    <message>
        <source>Pos First :</source>
        <translation>Pos First :</translation>
    </message>
    <message>
        <source>Dist First :</source>
        <translation>Dist First :</translation>
    </message>
    <message>
        <source>Pos Last :</source>
        <translation>Pos Last :</translation>
    </message>
    <message>
        <source>Dist Last :</source>
        <translation>Dist Last :</translation>
    </message>
    <message>
        <source>GO</source>
        <translation>GO</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continue</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>Main Menu</source>
        <translation>Main Menu</translation>
    </message>
</context>
<context>
    <name>WebViewer</name>
    <message>
        <source>Unable to open file</source>
        <translation>Unable to open file</translation>
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
