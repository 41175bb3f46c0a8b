<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en_GB">
<context>
    <name>Deed</name>
    <message numerus="yes">
        <source>%Ln files numbered</source>
        <translation>
            <numerusform>%Ln file numbered</numerusform>
            <numerusform>%Ln files numbered</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln files numbered</source>
        <translation>
            <numerusform>%1 of %Ln file numbered</numerusform>
            <numerusform>%1 of %Ln files numbered</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Unsupported tags removed from %Ln files</source>
        <translation>
            <numerusform>Unsupported tags removed from %Ln file</numerusform>
            <numerusform>Unsupported tags removed from %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Unsupported tags removed from %1 of %Ln files</source>
        <translation>
            <numerusform>Unsupported tags removed from %1 of %Ln file</numerusform>
            <numerusform>Unsupported tags removed from %1 of %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Tags removed from %Ln files</source>
        <translation>
            <numerusform>Tags removed from %Ln file</numerusform>
            <numerusform>Tags removed from %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Tags removed from %1 of %Ln files</source>
        <translation>
            <numerusform>Tags removed from %1 of %Ln file</numerusform>
            <numerusform>Tags removed from %1 of %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art set in %Ln files</source>
        <translation>
            <numerusform>Album art set in %Ln file</numerusform>
            <numerusform>Album art set in %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art set in %1 of %Ln files</source>
        <translation>
            <numerusform>Album art set in %1 of %Ln file</numerusform>
            <numerusform>Album art set in %1 of %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art deleted in %Ln files</source>
        <translation>
            <numerusform>Album art deleted in %Ln file</numerusform>
            <numerusform>Album art deleted in %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art deleted in %1 of %Ln files</source>
        <translation>
            <numerusform>Album art deleted in %1 of %Ln file</numerusform>
            <numerusform>Album art deleted in %1 of %Ln files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FileFormatController</name>
    <message numerus="yes">
        <source>%Ln files will be renamed</source>
        <translation>
            <numerusform>%Ln file will be renamed</numerusform>
            <numerusform>%Ln files will be renamed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %Ln unchanged</source>
        <comment>%1 tells how many files will be renamed</comment>
        <translation>
            <numerusform>%1, %Ln unchanged</numerusform>
            <numerusform>%1, %Ln unchanged</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %Ln can&apos;t be</source>
        <comment>%1 tells how many files will be renamed</comment>
        <translation>
            <numerusform>%1, %Ln can&apos;t be</numerusform>
            <numerusform>%1, %Ln can&apos;t be</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Messages</name>
    <message numerus="yes">
        <source>%Ln files are no longer in the list, so their album art stays as it is</source>
        <translation>
            <numerusform>%Ln file is no longer in the list, so its album art stays as it is</numerusform>
            <numerusform>%Ln files are no longer in the list, so their album art stays as it is</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message numerus="yes">
        <source>%Ln files</source>
        <translation>
            <numerusform>%Ln file</numerusform>
            <numerusform>%Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln files</source>
        <comment>the files that match a search, of all</comment>
        <translation>
            <numerusform>%1 of %Ln file</numerusform>
            <numerusform>%1 of %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %Ln selected</source>
        <comment>%1 tells the number of files</comment>
        <translation>
            <numerusform>%1, %Ln selected</numerusform>
            <numerusform>%1, %Ln selected</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Stopped after %1 of %Ln files</source>
        <translation>
            <numerusform>Stopped after %1 of %Ln file</numerusform>
            <numerusform>Stopped after %1 of %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln messages</source>
        <translation>
            <numerusform>%Ln message</numerusform>
            <numerusform>%Ln messages</numerusform>
        </translation>
    </message>
</context>
</TS>
