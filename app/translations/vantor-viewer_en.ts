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
</TS>
