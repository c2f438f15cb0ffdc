<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: MIT -->
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>CJobBar</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message numerus="yes">
        <source>%n annotation(s) went with the old image. Edit &gt; Restore Cleared Annotations brings them back.</source>
        <translation>
            <numerusform>%n annotation went with the old image. Edit &gt; Restore Cleared Annotations brings it back.</numerusform>
            <numerusform>%n annotations went with the old image. Edit &gt; Restore Cleared Annotations brings them back.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n annotation(s) of a kind that is unknown here did not go along with the image. They keep their old places in the file.</source>
        <translation>
            <numerusform>%n annotation of a kind that is unknown here did not go along with the image. It keeps its old place in the file.</numerusform>
            <numerusform>%n annotations of a kind that is unknown here did not go along with the image. They keep their old places in the file.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CMessageBar</name>
    <message numerus="yes">
        <source>%n more in the log.</source>
        <translation>
            <numerusform>%n more in the log.</numerusform>
            <numerusform>%n more in the log.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CRecoveryBar</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CUnsavedWork</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ImageFacts</name>
    <message numerus="yes">
        <source>%1 (%n byte(s))</source>
        <translation>
            <numerusform>%1 (%n byte)</numerusform>
            <numerusform>%1 (%n bytes)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n of %1 bits</source>
        <translation>
            <numerusform>%n of %1 bits</numerusform>
            <numerusform>%n of %1 bits</numerusform>
        </translation>
    </message>
</context>
</TS>
