<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AbstractQuotaWidget</name>
    <message numerus="yes">
        <source> files</source>
        <translation>
            <numerusform> file</numerusform>
            <numerusform> files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>GeneralWidget</name>
    <message numerus="yes">
        <source> weeks</source>
        <translation>
            <numerusform> week</numerusform>
            <numerusform> weeks</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> days</source>
        <translation>
            <numerusform> day</numerusform>
            <numerusform> days</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> hours</source>
        <translation>
            <numerusform> hour</numerusform>
            <numerusform> hours</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> minutes</source>
        <translation>
            <numerusform> minute</numerusform>
            <numerusform> minutes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> seconds</source>
        <translation>
            <numerusform> second</numerusform>
            <numerusform> seconds</numerusform>
        </translation>
    </message>
</context>
</TS>
