<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="en">
<context>
    <name>CMainWindow</name>
    <message>
        <source>Tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Properties</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is running...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings cannot be kept in the folder %1; they last until the program ends.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log files cannot be written in the folder %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Globe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About Vantor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vantor %1

An example host of libVantorCommon: components for viewing, annotating and processing raster images.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Add Images...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save As...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Close Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close A&amp;ll Images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rotate &amp;Left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rotate Ri&amp;ght</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;One Viewer (1x1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Two Viewers (2x1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Four Viewers (2x2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fit to &amp;Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Go To...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Previous Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Next Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;2D View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;3D View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Docks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>As the &amp;Desktop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dar&amp;k</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Median Filter...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Sobel Filter...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;OCR...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Capture the Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Globe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;elect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Pan</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Ruler</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Draw</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Rectangle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Ellipse</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Circle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Polygon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Shortcuts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About Vantor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tool Bar</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CMessageBar</name>
    <message>
        <source>Messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close the message</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n more in the log.</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CRecentFiles</name>
    <message>
        <source>&amp;Clear the List</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CShortcutsDlg</name>
    <message>
        <source>Shortcuts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Action</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Menus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In a viewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom about the mouse</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pan, in panning mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select, move or resize an annotation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click, drag it or a handle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete the selected annotations</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete or Backspace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back to selecting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Escape</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close a polygon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click at its first corner</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Context menu</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right click or Menu key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn the 3D view</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SCommandLine</name>
    <message>
        <source>Shows, annotates and processes images and PDF documents.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show one, two or four viewers: 1x1, 2x1 or 2x2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>layout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write a picture of the main window and quit.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep the settings in this folder; it is made if need be.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write the log files into this folder; it is made if need be.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the version and quit.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show this help and quit.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images and documents: each in a viewer of its own, up to four.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no layout; use 1x1, 2x1 or 2x2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The option --%1 needs a name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot write %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try &apos;vantor-viewer --help&apos;.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
