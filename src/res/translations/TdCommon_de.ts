<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>TdCommon</name>
    <message>
        <source>Binary</source>
        <translation>Binär</translation>
    </message>
    <message>
        <source>Boolean</source>
        <translation>Wahrheitswert</translation>
    </message>
    <message>
        <source>Byte</source>
        <translation>Byte</translation>
    </message>
    <message>
        <source>Centimeter</source>
        <translation>Zentimeter</translation>
    </message>
    <message>
        <source>Square Centimeter</source>
        <translation>Quadratzentimeter</translation>
    </message>
    <message>
        <source>Character</source>
        <translation>Zeichenkette</translation>
    </message>
    <message>
        <source>Currency</source>
        <translation>Währung</translation>
    </message>
    <message>
        <source>Datasources</source>
        <translation>Datenquellen</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Decimeter</source>
        <translation>Dezimeter</translation>
    </message>
    <message>
        <source>Square Decimeter</source>
        <translation>Quadratdezimeter</translation>
    </message>
    <message>
        <source>Double</source>
        <translation>Gleitkommazahl (doppelt)</translation>
    </message>
    <message>
        <source>CAD</source>
        <translation>CAD</translation>
    </message>
    <message>
        <source>DEM</source>
        <translation>DGM</translation>
    </message>
    <message>
        <source>ECW</source>
        <translation>ECW</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>Raster</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Route</source>
        <translation>Route</translation>
    </message>
    <message>
        <source>3D Line</source>
        <translation>3D-Linie</translation>
    </message>
    <message>
        <source>MrSID</source>
        <translation>MrSID</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Parcel</source>
        <translation>Flurstück</translation>
    </message>
    <message>
        <source>Point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>3D PointGL</source>
        <translation>3D-GL-Punkt</translation>
    </message>
    <message>
        <source>3D Point</source>
        <translation>3D-Punkt</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>Fläche</translation>
    </message>
    <message>
        <source>3D Region</source>
        <translation>3D-Fläche</translation>
    </message>
    <message>
        <source>Tabular</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>3D Text</source>
        <translation>3D-Text</translation>
    </message>
    <message>
        <source>TIN</source>
        <translation>TIN</translation>
    </message>
    <message>
        <source>TRAVERSE</source>
        <translation>Polygonzug</translation>
    </message>
    <message>
        <source>Unknown Type</source>
        <translation>Unbekannter Typ</translation>
    </message>
    <message>
        <source>Fill Library</source>
        <translation>Füllmusterbibliothek</translation>
    </message>
    <message>
        <source>Float</source>
        <translation>Gleitkommazahl</translation>
    </message>
    <message>
        <source>Foot</source>
        <translation>Fuß</translation>
    </message>
    <message>
        <source>Square Foot</source>
        <translation>Quadratfuß</translation>
    </message>
    <message>
        <source>Inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>Square Inch</source>
        <translation>Quadratzoll</translation>
    </message>
    <message>
        <source>Kilometer</source>
        <translation>Kilometer</translation>
    </message>
    <message>
        <source>Square Kilometer</source>
        <translation>Quadratkilometer</translation>
    </message>
    <message>
        <source>Layouts</source>
        <translation>Layouts</translation>
    </message>
    <message>
        <source>Line Library</source>
        <translation>Linienbibliothek</translation>
    </message>
    <message>
        <source>Long Int</source>
        <translation>Ganzzahl (lang)</translation>
    </message>
    <message>
        <source>Long Binary</source>
        <translation>Binär (lang)</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>Karten</translation>
    </message>
    <message>
        <source>Memo</source>
        <translation>Memo</translation>
    </message>
    <message>
        <source>Meter</source>
        <translation>Meter</translation>
    </message>
    <message>
        <source>Square Meter</source>
        <translation>Quadratmeter</translation>
    </message>
    <message>
        <source>Mile</source>
        <translation>Meile</translation>
    </message>
    <message>
        <source>Square Mile</source>
        <translation>Quadratmeile</translation>
    </message>
    <message>
        <source>Millimeter</source>
        <translation>Millimeter</translation>
    </message>
    <message>
        <source>Square Millimeter</source>
        <translation>Quadratmillimeter</translation>
    </message>
    <message>
        <source>Numeric</source>
        <translation>Dezimalzahl</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>Ressourcen</translation>
    </message>
    <message>
        <source>Short Int</source>
        <translation>Ganzzahl (kurz)</translation>
    </message>
    <message>
        <source>Single</source>
        <translation>Gleitkommazahl (einfach)</translation>
    </message>
    <message>
        <source>Symbol Library</source>
        <translation>Symbolbibliothek</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Untitle Workspace</source>
        <translation>Unbenannter Arbeitsbereich</translation>
    </message>
    <message>
        <source>Yard</source>
        <translation>Yard</translation>
    </message>
    <message>
        <source>Square Yard</source>
        <translation>Quadratyard</translation>
    </message>
    <message>
        <source>degree</source>
        <translation>Grad</translation>
    </message>
    <message>
        <source>3D Scenes</source>
        <translation>3D-Szenen</translation>
    </message>
    <message>
        <source>Uncoded</source>
        <translation>Unkodiert</translation>
    </message>
    <message>
        <source>The operating dataset &quot;%s&quot; is opened. To continue, you must close it first. Close it?</source>
        <translation>Das zu bearbeitende Dataset „%s“ ist geöffnet. Um fortzufahren, muss es zuerst geschlossen werden. Jetzt schließen?</translation>
    </message>
    <message>
        <source>Please select a directory path <byte value="xd"/>
%s</source>
        <translation>Bitte wählen Sie einen Ordner aus <byte value="xd"/>
%s</translation>
    </message>
    <message>
        <source>Unknown encoding type.</source>
        <translation>Unbekannte Kodierungsart.</translation>
    </message>
    <message>
        <source>Western</source>
        <translation>Westlich</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>Mac</source>
        <translation>Mac</translation>
    </message>
    <message>
        <source>Japanese</source>
        <translation>Japanisch</translation>
    </message>
    <message>
        <source>Hangul</source>
        <translation>Hangul</translation>
    </message>
    <message>
        <source>Hangul (Johab)</source>
        <translation>Hangul (Johab)</translation>
    </message>
    <message>
        <source>Chinese (GB2312)</source>
        <translation>Chinesisch (GB2312)</translation>
    </message>
    <message>
        <source>Chinese (Big5)</source>
        <translation>Chinesisch (Big5)</translation>
    </message>
    <message>
        <source>Greek</source>
        <translation>Griechisch</translation>
    </message>
    <message>
        <source>Turkish</source>
        <translation>Türkisch</translation>
    </message>
    <message>
        <source>Vietnamese</source>
        <translation>Vietnamesisch</translation>
    </message>
    <message>
        <source>Hebrew</source>
        <translation>Hebräisch</translation>
    </message>
    <message>
        <source>Arabic</source>
        <translation>Arabisch</translation>
    </message>
    <message>
        <source>Baltic</source>
        <translation>Baltisch</translation>
    </message>
    <message>
        <source>Cyrillic</source>
        <translation>Kyrillisch</translation>
    </message>
    <message>
        <source>Thai</source>
        <translation>Thailändisch</translation>
    </message>
    <message>
        <source>Central European</source>
        <translation>Mitteleuropäisch</translation>
    </message>
    <message>
        <source>OEM/DOS</source>
        <translation>OEM/DOS</translation>
    </message>
    <message>
        <source>Filter the workspace</source>
        <translation>Arbeitsbereich filtern</translation>
    </message>
    <message>
        <source>%1 found</source>
        <translation>%1 gefunden</translation>
    </message>
    <message>
        <source>Nothing in the workspace matches &quot;%1&quot;.</source>
        <translation>Nichts im Arbeitsbereich passt zu „%1“.</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Arbeitsbereich</translation>
    </message>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>This map is empty. Drag datasets here to show them.</source>
        <translation>Diese Karte ist leer. Ziehen Sie Datasets hierher, um sie zu zeigen.</translation>
    </message>
    <message>
        <source>No map is shown.</source>
        <translation>Es wird keine Karte gezeigt.</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>Wird angehalten…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 h</translation>
    </message>
    <message>
        <source>About %1 left</source>
        <translation>Noch etwa %1</translation>
    </message>
    <message>
        <source>Appending records to “%1”</source>
        <translation>Datensätze werden an „%1“ angehängt</translation>
    </message>
</context>
</TS>
