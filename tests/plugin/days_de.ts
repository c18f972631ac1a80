<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>GeneralWidget</name>
    <message numerus="yes">
        <source> days</source>
        <translation>
            <numerusform> Tag</numerusform>
            <numerusform> Tage</numerusform>
        </translation>
    </message>
</context>
</TS>
