<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CTdDlgRibbon</name>
    <message>
        <source>Color Ribbon</source>
        <translation>Farbband</translation>
    </message>
    <message>
        <source>Color ribbon</source>
        <translation>Farbband</translation>
    </message>
    <message>
        <source>Color ribbon as the chosen viewers see it</source>
        <translation>Farbband, wie die gewählten Betrachter es sehen</translation>
    </message>
    <message>
        <source>Mi&amp;nimum:</source>
        <translation>Mi&amp;nimum:</translation>
    </message>
    <message>
        <source>Ma&amp;ximum:</source>
        <translation>Ma&amp;ximum:</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>Hinzu&amp;fügen</translation>
    </message>
    <message>
        <source>Add a stop behind the selected one (Ins)</source>
        <translation>Fügt hinter der gewählten Stütze eine hinzu (Einfg)</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Delete the selected stop (Del)</source>
        <translation>Löscht die gewählte Stütze (Entf)</translation>
    </message>
    <message>
        <source>Space &amp;Evenly</source>
        <translation>Gl&amp;eich verteilen</translation>
    </message>
    <message>
        <source>Space the stops evenly over the range</source>
        <translation>Verteilt die Stützen gleichmäßig über den Bereich</translation>
    </message>
    <message>
        <source>Rever&amp;se</source>
        <translation>&amp;Umkehren</translation>
    </message>
    <message>
        <source>Reverse the order of the colors</source>
        <translation>Kehrt die Reihenfolge der Farben um</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Undo (Ctrl+Z)</source>
        <translation>Rückgängig (Strg+Z)</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Redo (Ctrl+Shift+Z)</source>
        <translation>Wiederholen (Strg+Umschalt+Z)</translation>
    </message>
    <message>
        <source>Selected stop</source>
        <translation>Gewählte Stütze</translation>
    </message>
    <message>
        <source>Co&amp;lor:</source>
        <translation>Fa&amp;rbe:</translation>
    </message>
    <message>
        <source>Color of the selected stop</source>
        <translation>Farbe der gewählten Stütze</translation>
    </message>
    <message>
        <source>Choose the color of the selected stop</source>
        <translation>Wählt die Farbe der gewählten Stütze</translation>
    </message>
    <message>
        <source>&amp;Value:</source>
        <translation>&amp;Wert:</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>R&amp;ot:</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>&amp;Grün:</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>&amp;Blue:</source>
        <translation>&amp;Blau:</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Vie&amp;w with:</source>
        <translation>&amp;Sehen mit:</translation>
    </message>
    <message>
        <source>Full color vision</source>
        <translation>Voller Farbsicht</translation>
    </message>
    <message>
        <source>Protanopia (no red cones)</source>
        <translation>Protanopie (keine Rotzapfen)</translation>
    </message>
    <message>
        <source>Deuteranopia (no green cones)</source>
        <translation>Deuteranopie (keine Grünzapfen)</translation>
    </message>
    <message>
        <source>Tritanopia (no blue cones)</source>
        <translation>Tritanopie (keine Blauzapfen)</translation>
    </message>
    <message>
        <source>Achromatopsia (no color)</source>
        <translation>Achromatopsie (keine Farben)</translation>
    </message>
    <message>
        <source>I&amp;mport...</source>
        <translation>I&amp;mportieren...</translation>
    </message>
    <message>
        <source>Ex&amp;port...</source>
        <translation>Ex&amp;portieren...</translation>
    </message>
</context>
<context>
    <name>CTdIDEDlgColorSet</name>
    <message>
        <source>Edit Colorset</source>
        <translation>Farbtabelle bearbeiten</translation>
    </message>
    <message>
        <source>&amp;HSB</source>
        <translation>&amp;HSB</translation>
    </message>
    <message>
        <source>Hue, saturation and brightness</source>
        <translation>Farbton, Sättigung und Helligkeit</translation>
    </message>
    <message>
        <source>RG&amp;B</source>
        <translation>RG&amp;B</translation>
    </message>
    <message>
        <source>Red, green and blue</source>
        <translation>Rot, Grün und Blau</translation>
    </message>
    <message>
        <source>R:</source>
        <translation>R:</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>G:</source>
        <translation>G:</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>B:</source>
        <translation>B:</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>H:</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Farbton</translation>
    </message>
    <message>
        <source>S:</source>
        <translation>S:</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Sättigung</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>New color</source>
        <translation>Neue Farbe</translation>
    </message>
    <message>
        <source>Old</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Old color</source>
        <translation>Alte Farbe</translation>
    </message>
    <message>
        <source>Go back to this color</source>
        <translation>Zurück zu dieser Farbe</translation>
    </message>
    <message>
        <source>Ma&amp;x Z:</source>
        <translation>Ma&amp;x. Z:</translation>
    </message>
    <message>
        <source>&amp;Global Max</source>
        <translation>&amp;Globales Max.</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>Hinzu&amp;fügen</translation>
    </message>
    <message>
        <source>I&amp;nsert</source>
        <translation>Ei&amp;nfügen</translation>
    </message>
    <message>
        <source>Appl&amp;y</source>
        <translation>Anwen&amp;den</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Dele&amp;te All</source>
        <translation>Al&amp;le löschen</translation>
    </message>
    <message>
        <source>&amp;Load...</source>
        <translation>Ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>&amp;Save...</source>
        <translation>&amp;Speichern...</translation>
    </message>
    <message>
        <source>Min &amp;Z:</source>
        <translation>Min. &amp;Z:</translation>
    </message>
    <message>
        <source>Gl&amp;obal Min</source>
        <translation>Gl&amp;obales Min.</translation>
    </message>
    <message>
        <source>Sta&amp;rt Color:</source>
        <translation>E&amp;rste Farbe:</translation>
    </message>
    <message>
        <source>Start color</source>
        <translation>Erste Farbe</translation>
    </message>
    <message>
        <source>&amp;End Color:</source>
        <translation>Le&amp;tzte Farbe:</translation>
    </message>
    <message>
        <source>End color</source>
        <translation>Letzte Farbe</translation>
    </message>
    <message>
        <source>Create Rando&amp;m Color</source>
        <translation>Zufallsfarben er&amp;zeugen</translation>
    </message>
    <message>
        <source>Create S&amp;pecific Color</source>
        <translation>Verlauf erze&amp;ugen</translation>
    </message>
    <message>
        <source>Stoc&amp;k Gradient:</source>
        <translation>&amp;Vorgegebener Verlauf:</translation>
    </message>
    <message>
        <source>Choose a ramp</source>
        <translation>Verlauf wählen</translation>
    </message>
    <message>
        <source>&amp;Inverse</source>
        <translation>Um&amp;kehren</translation>
    </message>
</context>
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
    <message>
        <source>Failed to read the file!<byte value="xd"/>
The file is not colorset file.</source>
        <translation>Die Datei kann nicht gelesen werden!<byte value="xd"/>
Die Datei ist keine Farbtabelle.</translation>
    </message>
    <message>
        <source>Cannot save the colorset file. Because the minimum and maximum elevation of the 3D model are the same, and then it cannot set up color by level.</source>
        <translation>Die Farbtabelle kann nicht gespeichert werden: die kleinste und die größte Höhe des 3D-Modells sind gleich, deshalb lassen sich den Höhen keine Farben zuordnen.</translation>
    </message>
    <message>
        <source>Cannot save the colorset file. Because the colorset of 3D model is null.</source>
        <translation>Die Farbtabelle kann nicht gespeichert werden: die Farbtabelle des 3D-Modells ist leer.</translation>
    </message>
    <message>
        <source>Save colorse as</source>
        <translation>Farbtabelle speichern unter</translation>
    </message>
    <message>
        <source>Cannot save the colorset file!</source>
        <translation>Die Farbtabelle kann nicht gespeichert werden!</translation>
    </message>
    <message>
        <source>Auto Create Colorset &gt;&gt;</source>
        <translation>Farben erzeugen &gt;&gt;</translation>
    </message>
    <message>
        <source>Failure</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>Terravox 3D Colorset (*.sct)|*.sct||</source>
        <translation>Terravox-3D-Farbtabelle (*.sct)|*.sct||</translation>
    </message>
    <message>
        <source>Hide Panel &lt;&lt;</source>
        <translation>Weniger &lt;&lt;</translation>
    </message>
    <message>
        <source>Longitude value must be in -90 and 90. </source>
        <translation>Der Längenwert muss zwischen -90 und 90 liegen. </translation>
    </message>
    <message>
        <source>Latitude value must be in -180 and 180.</source>
        <translation>Der Breitenwert muss zwischen -180 und 180 liegen.</translation>
    </message>
    <message>
        <source>Color of the New Stop</source>
        <translation>Farbe der neuen Stütze</translation>
    </message>
    <message>
        <source>Color of the Stop</source>
        <translation>Farbe der Stütze</translation>
    </message>
    <message>
        <source>Stop %1 of %2: value %3; red %4, green %5, blue %6</source>
        <translation>Stütze %1 von %2: Wert %3; Rot %4, Grün %5, Blau %6</translation>
    </message>
    <message>
        <source>Import Color Ribbon</source>
        <translation>Farbband importieren</translation>
    </message>
    <message>
        <source>Export Color Ribbon</source>
        <translation>Farbband exportieren</translation>
    </message>
    <message>
        <source>Click the band to add a stop, or a marker to edit its stop.</source>
        <translation>Ein Klick auf das Band fügt eine Stütze hinzu, einer auf eine Marke wählt ihre Stütze.</translation>
    </message>
    <message>
        <source>Not taken: the maximum must be a number above %1.</source>
        <translation>Nicht übernommen: das Maximum muss eine Zahl über %1 sein.</translation>
    </message>
    <message>
        <source>Not taken: the minimum must be a number below %1.</source>
        <translation>Nicht übernommen: das Minimum muss eine Zahl unter %1 sein.</translation>
    </message>
    <message>
        <source>Not taken: the value must be a number between %1 and %2.</source>
        <translation>Nicht übernommen: der Wert muss eine Zahl zwischen %1 und %2 sein.</translation>
    </message>
    <message>
        <source>Not taken: the first and the last stop stand at the ends of the range.</source>
        <translation>Nicht übernommen: die erste und die letzte Stütze stehen an den Enden des Bereichs.</translation>
    </message>
    <message>
        <source>Not taken: red, green and blue are whole numbers from 0 to 255.</source>
        <translation>Nicht übernommen: Rot, Grün und Blau sind ganze Zahlen von 0 bis 255.</translation>
    </message>
    <message>
        <source>Stops %1 and %2 look alike with %3.</source>
        <translation>Die Stützen %1 und %2 sehen gleich aus: %3.</translation>
    </message>
    <message>
        <source>The lightness turns at or behind stop %1: there more cannot be told from less.</source>
        <translation>Die Helligkeit kehrt bei oder hinter Stütze %1 um: dort lässt sich mehr nicht von weniger unterscheiden.</translation>
    </message>
    <message>
        <source>Color %1: red %2, green %3, blue %4</source>
        <translation>Farbe %1: Rot %2, Grün %3, Blau %4</translation>
    </message>
    <message>
        <source>Edit This Color</source>
        <translation>Diese Farbe bearbeiten</translation>
    </message>
    <message>
        <source>Hue and saturation</source>
        <translation>Farbton und Sättigung</translation>
    </message>
    <message>
        <source>Hue %1, saturation %2</source>
        <translation>Farbton %1, Sättigung %2</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>RGB cube</source>
        <translation>RGB-Würfel</translation>
    </message>
    <message>
        <source>Red %1, green %2, blue %3</source>
        <translation>Rot %1, Grün %2, Blau %3</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Colors</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Grey</source>
        <translation>Grau</translation>
    </message>
    <message>
        <source>Grey, White to Black</source>
        <translation>Grau, Weiß nach Schwarz</translation>
    </message>
    <message>
        <source>Viridis</source>
        <translation>Viridis</translation>
    </message>
    <message>
        <source>Magma</source>
        <translation>Magma</translation>
    </message>
    <message>
        <source>Plasma</source>
        <translation>Plasma</translation>
    </message>
    <message>
        <source>Inferno</source>
        <translation>Inferno</translation>
    </message>
    <message>
        <source>Blue to Yellow</source>
        <translation>Blau nach Gelb</translation>
    </message>
    <message>
        <source>Cubehelix</source>
        <translation>Cubehelix</translation>
    </message>
    <message>
        <source>Blues</source>
        <translation>Blautöne</translation>
    </message>
    <message>
        <source>Greens</source>
        <translation>Grüntöne</translation>
    </message>
    <message>
        <source>Yellow, Green, Blue</source>
        <translation>Gelb, Grün, Blau</translation>
    </message>
    <message>
        <source>Yellow, Orange, Red</source>
        <translation>Gelb, Orange, Rot</translation>
    </message>
    <message>
        <source>Heat</source>
        <translation>Hitze</translation>
    </message>
    <message>
        <source>Black Body</source>
        <translation>Schwarzer Körper</translation>
    </message>
    <message>
        <source>Blue, White, Red</source>
        <translation>Blau, Weiß, Rot</translation>
    </message>
    <message>
        <source>Brown, White, Teal</source>
        <translation>Braun, Weiß, Blaugrün</translation>
    </message>
    <message>
        <source>Purple, White, Orange</source>
        <translation>Violett, Weiß, Orange</translation>
    </message>
    <message>
        <source>Purple, White, Green</source>
        <translation>Violett, Weiß, Grün</translation>
    </message>
    <message>
        <source>Blue, Grey, Orange</source>
        <translation>Blau, Grau, Orange</translation>
    </message>
    <message>
        <source>Red, Yellow, Green</source>
        <translation>Rot, Gelb, Grün</translation>
    </message>
    <message>
        <source>Hue Circle</source>
        <translation>Farbkreis</translation>
    </message>
    <message>
        <source>Aspect</source>
        <translation>Exposition</translation>
    </message>
    <message>
        <source>Phase</source>
        <translation>Phase</translation>
    </message>
    <message>
        <source>Elevation</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Hypsometric with Sea</source>
        <translation>Höhenstufen mit Meer</translation>
    </message>
    <message>
        <source>Hypsometric with Sea, Soft</source>
        <translation>Höhenstufen mit Meer, zart</translation>
    </message>
    <message>
        <source>Arid Elevation</source>
        <translation>Höhe, trocken</translation>
    </message>
    <message>
        <source>Bathymetry</source>
        <translation>Meerestiefe</translation>
    </message>
    <message>
        <source>Slope</source>
        <translation>Hangneigung</translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <source>Precipitation</source>
        <translation>Niederschlag</translation>
    </message>
    <message>
        <source>Vegetation (NDVI)</source>
        <translation>Vegetation (NDVI)</translation>
    </message>
    <message>
        <source>Spectral</source>
        <translation>Spektral</translation>
    </message>
    <message>
        <source>Rainbow (Not Recommended)</source>
        <translation>Regenbogen (nicht empfohlen)</translation>
    </message>
    <message>
        <source>From little to much</source>
        <translation>Von wenig nach viel</translation>
    </message>
    <message>
        <source>To both sides of a middle</source>
        <translation>Nach beiden Seiten einer Mitte</translation>
    </message>
    <message>
        <source>For directions and phases</source>
        <translation>Für Richtungen und Phasen</translation>
    </message>
    <message>
        <source>For heights and depths</source>
        <translation>Für Höhen und Tiefen</translation>
    </message>
    <message>
        <source>For a subject</source>
        <translation>Für ein Thema</translation>
    </message>
    <message>
        <source>sea level in the middle</source>
        <translation>Meeresspiegel in der Mitte</translation>
    </message>
    <message>
        <source>even steps</source>
        <translation>gleichmäßige Schritte</translation>
    </message>
    <message>
        <source>safe for color-blind readers</source>
        <translation>auch für Farbenblinde lesbar</translation>
    </message>
    <message>
        <source>Color ramp</source>
        <translation>Farbverlauf</translation>
    </message>
    <message>
        <source>A ramp of your own</source>
        <translation>Ein eigener Verlauf</translation>
    </message>
    <message>
        <source>Custom…</source>
        <translation>Eigener …</translation>
    </message>
    <message>
        <source>The file cannot be read.</source>
        <translation>Die Datei kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The file is too large for a color ramp.</source>
        <translation>Die Datei ist zu groß für einen Farbverlauf.</translation>
    </message>
    <message>
        <source>The name does not end as the name of a ramp file does: .cpt, .ggr, .rules or .sct.</source>
        <translation>Der Name endet nicht wie der einer Verlaufsdatei: .cpt, .ggr, .rules oder .sct.</translation>
    </message>
    <message>
        <source>The file does not begin as a file of this kind does.</source>
        <translation>Die Datei beginnt nicht wie eine Datei dieser Art.</translation>
    </message>
    <message>
        <source>The file has no colors.</source>
        <translation>Die Datei enthält keine Farben.</translation>
    </message>
    <message>
        <source>The line does not belong into a file of this kind.</source>
        <translation>Die Zeile gehört nicht in eine Datei dieser Art.</translation>
    </message>
    <message>
        <source>A number is missing or wrong.</source>
        <translation>Eine Zahl fehlt oder ist falsch.</translation>
    </message>
    <message>
        <source>The color is not known.</source>
        <translation>Die Farbe ist nicht bekannt.</translation>
    </message>
    <message>
        <source>The values are out of order.</source>
        <translation>Die Werte sind nicht geordnet.</translation>
    </message>
    <message>
        <source>Percentages stand beside values: they can be read only for data whose range is known.</source>
        <translation>Prozente stehen neben Werten: das lässt sich nur für Daten mit bekanntem Bereich lesen.</translation>
    </message>
    <message>
        <source>The file cannot be written.</source>
        <translation>Die Datei kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Left out: the colors below and above the range.</source>
        <translation>Weggelassen: die Farben unter und über dem Bereich.</translation>
    </message>
    <message>
        <source>Left out: the color of places without a value.</source>
        <translation>Weggelassen: die Farbe von Stellen ohne Wert.</translation>
    </message>
    <message>
        <source>Left out: transparency. All colors are opaque.</source>
        <translation>Weggelassen: Durchsichtigkeit. Alle Farben decken.</translation>
    </message>
    <message>
        <source>Stops were added to follow colors that do not run straight in red, green and blue.</source>
        <translation>Stützen wurden hinzugefügt, um Farben zu folgen, die in Rot, Grün und Blau nicht gerade verlaufen.</translation>
    </message>
    <message>
        <source>The colors of separate categories became steps.</source>
        <translation>Die Farben einzelner Klassen wurden zu Stufen.</translation>
    </message>
    <message>
        <source>The file tells only the parts of a range, which are stretched over the range of the data.</source>
        <translation>Die Datei nennt nur Teile eines Bereichs; sie werden über den Bereich der Daten gestreckt.</translation>
    </message>
    <message>
        <source>Left out: the hinge. Both sides of the ramp are stretched together.</source>
        <translation>Weggelassen: das Gelenk. Beide Seiten des Verlaufs werden gemeinsam gestreckt.</translation>
    </message>
    <message>
        <source>Left out: that the colors repeat.</source>
        <translation>Weggelassen: dass die Farben sich wiederholen.</translation>
    </message>
    <message>
        <source>Left out: labels.</source>
        <translation>Weggelassen: Beschriftungen.</translation>
    </message>
    <message>
        <source>A gap between colors was closed by blending them.</source>
        <translation>Eine Lücke zwischen Farben wurde durch einen Übergang geschlossen.</translation>
    </message>
    <message>
        <source>Colors to be chosen in the painting program were taken as they stand in the file.</source>
        <translation>Farben, die im Malprogramm zu wählen sind, wurden übernommen, wie sie in der Datei stehen.</translation>
    </message>
    <message>
        <source>Files of this kind run from 0 to 1: the values of the ramp are not in the file.</source>
        <translation>Dateien dieser Art laufen von 0 bis 1: die Werte des Verlaufs stehen nicht in der Datei.</translation>
    </message>
    <message>
        <source>The color set editor will spread the colors evenly. The ribbon editor keeps their places.</source>
        <translation>Der Farbtabelleneditor wird die Farben gleichmäßig verteilen. Der Farbbandeditor behält ihre Plätze.</translation>
    </message>
    <message>
        <source>%1 (line %2)</source>
        <translation>%1 (Zeile %2)</translation>
    </message>
    <message>
        <source>%1 (line %2, and %3 more)</source>
        <translation>%1 (Zeile %2 und %3 weitere)</translation>
    </message>
    <message>
        <source>Color Ramps (*.cpt *.ggr *.rules *.sct *.txt)</source>
        <translation>Farbverläufe (*.cpt *.ggr *.rules *.sct *.txt)</translation>
    </message>
    <message>
        <source>GMT Color Palette Table (*.cpt)</source>
        <translation>GMT-Farbpalette (*.cpt)</translation>
    </message>
    <message>
        <source>GIMP Gradient (*.ggr)</source>
        <translation>GIMP-Farbverlauf (*.ggr)</translation>
    </message>
    <message>
        <source>GRASS Color Rules (*.rules)</source>
        <translation>GRASS-Farbregeln (*.rules)</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>all checked</source>
        <translation>alle angekreuzt</translation>
    </message>
    <message>
        <source>some checked</source>
        <translation>manche angekreuzt</translation>
    </message>
    <message>
        <source>none checked</source>
        <translation>keine angekreuzt</translation>
    </message>
    <message>
        <source>sorted ascending</source>
        <translation>aufsteigend sortiert</translation>
    </message>
    <message>
        <source>sorted descending</source>
        <translation>absteigend sortiert</translation>
    </message>
    <message>
        <source>This entry is not valid.</source>
        <translation>Dieser Eintrag ist nicht gültig.</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Durchgezogen</translation>
    </message>
    <message>
        <source>No Fill</source>
        <translation>Keine Füllung</translation>
    </message>
    <message>
        <source>Horizontal Lines</source>
        <translation>Waagerechte Linien</translation>
    </message>
    <message>
        <source>Vertical Lines</source>
        <translation>Senkrechte Linien</translation>
    </message>
    <message>
        <source>Rising Lines</source>
        <translation>Steigende Linien</translation>
    </message>
    <message>
        <source>Falling Lines</source>
        <translation>Fallende Linien</translation>
    </message>
    <message>
        <source>Diagonal Grid</source>
        <translation>Schräges Gitter</translation>
    </message>
    <message>
        <source>Rising Pairs of Lines</source>
        <translation>Steigende Doppellinien</translation>
    </message>
    <message>
        <source>Dashes</source>
        <translation>Striche</translation>
    </message>
    <message>
        <source>Zigzag</source>
        <translation>Zickzack</translation>
    </message>
    <message>
        <source>Checks</source>
        <translation>Schachbrett</translation>
    </message>
    <message>
        <source>Dots</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Staggered Dots</source>
        <translation>Versetzte Punkte</translation>
    </message>
    <message>
        <source>Sand</source>
        <translation>Sand</translation>
    </message>
    <message>
        <source>Rings</source>
        <translation>Kringel</translation>
    </message>
    <message>
        <source>Plus Signs</source>
        <translation>Pluszeichen</translation>
    </message>
    <message>
        <source>Bricks</source>
        <translation>Ziegel</translation>
    </message>
    <message>
        <source>Stones</source>
        <translation>Steine</translation>
    </message>
    <message>
        <source>Broad-Leaved Wood</source>
        <translation>Laubwald</translation>
    </message>
    <message>
        <source>Coniferous Wood</source>
        <translation>Nadelwald</translation>
    </message>
    <message>
        <source>Orchard</source>
        <translation>Obstgarten</translation>
    </message>
    <message>
        <source>Meadow</source>
        <translation>Wiese</translation>
    </message>
    <message>
        <source>Marsh</source>
        <translation>Sumpf</translation>
    </message>
    <message>
        <source>Vineyard</source>
        <translation>Weinberg</translation>
    </message>
    <message>
        <source>Water</source>
        <translation>Wasser</translation>
    </message>
    <message>
        <source>Cemetery</source>
        <translation>Friedhof</translation>
    </message>
    <message>
        <source>Scales</source>
        <translation>Schuppen</translation>
    </message>
    <message>
        <source>Dash</source>
        <translation>Strich</translation>
    </message>
    <message>
        <source>Dot</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>Dash, Dot</source>
        <translation>Strich, Punkt</translation>
    </message>
    <message>
        <source>Dash, Dot, Dot</source>
        <translation>Strich, Punkt, Punkt</translation>
    </message>
    <message>
        <source>Long Dash</source>
        <translation>Langer Strich</translation>
    </message>
    <message>
        <source>Short Dash</source>
        <translation>Kurzer Strich</translation>
    </message>
    <message>
        <source>Double Line</source>
        <translation>Doppellinie</translation>
    </message>
    <message>
        <source>Road</source>
        <translation>Straße</translation>
    </message>
    <message>
        <source>Motorway</source>
        <translation>Autobahn</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Feldweg</translation>
    </message>
    <message>
        <source>Tunnel</source>
        <translation>Tunnel</translation>
    </message>
    <message>
        <source>Railway</source>
        <translation>Eisenbahn</translation>
    </message>
    <message>
        <source>Railway with Ties</source>
        <translation>Eisenbahn mit Schwellen</translation>
    </message>
    <message>
        <source>Tramway</source>
        <translation>Straßenbahn</translation>
    </message>
    <message>
        <source>Cableway</source>
        <translation>Seilbahn</translation>
    </message>
    <message>
        <source>Power Line</source>
        <translation>Stromleitung</translation>
    </message>
    <message>
        <source>Pipeline</source>
        <translation>Rohrleitung</translation>
    </message>
    <message>
        <source>Fence</source>
        <translation>Zaun</translation>
    </message>
    <message>
        <source>Wall</source>
        <translation>Mauer</translation>
    </message>
    <message>
        <source>Ticks</source>
        <translation>Teilstriche</translation>
    </message>
    <message>
        <source>Embankment</source>
        <translation>Böschung</translation>
    </message>
    <message>
        <source>Dike</source>
        <translation>Deich</translation>
    </message>
    <message>
        <source>Cliff</source>
        <translation>Kliff</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Front</translation>
    </message>
    <message>
        <source>Arrows</source>
        <translation>Pfeile</translation>
    </message>
    <message>
        <source>Wave</source>
        <translation>Welle</translation>
    </message>
    <message>
        <source>State Border</source>
        <translation>Staatsgrenze</translation>
    </message>
    <message>
        <source>Border with Tint</source>
        <translation>Grenze mit Farbsaum</translation>
    </message>
    <message>
        <source>Circle</source>
        <translation>Kreis</translation>
    </message>
    <message>
        <source>Ring</source>
        <translation>Ring</translation>
    </message>
    <message>
        <source>Ring with Dot</source>
        <translation>Ring mit Punkt</translation>
    </message>
    <message>
        <source>Square</source>
        <translation>Quadrat</translation>
    </message>
    <message>
        <source>Square, Open</source>
        <translation>Quadrat, offen</translation>
    </message>
    <message>
        <source>Triangle</source>
        <translation>Dreieck</translation>
    </message>
    <message>
        <source>Diamond</source>
        <translation>Raute</translation>
    </message>
    <message>
        <source>Hexagon</source>
        <translation>Sechseck</translation>
    </message>
    <message>
        <source>Star</source>
        <translation>Stern</translation>
    </message>
    <message>
        <source>Cross</source>
        <translation>Kreuz</translation>
    </message>
    <message>
        <source>Diagonal Cross</source>
        <translation>Schrägkreuz</translation>
    </message>
    <message>
        <source>Plus</source>
        <translation>Plus</translation>
    </message>
    <message>
        <source>Asterisk</source>
        <translation>Sternchen</translation>
    </message>
    <message>
        <source>Arrow</source>
        <translation>Pfeil</translation>
    </message>
    <message>
        <source>Capital</source>
        <translation>Hauptstadt</translation>
    </message>
    <message>
        <source>House</source>
        <translation>Haus</translation>
    </message>
    <message>
        <source>Church</source>
        <translation>Kirche</translation>
    </message>
    <message>
        <source>School</source>
        <translation>Schule</translation>
    </message>
    <message>
        <source>Hospital</source>
        <translation>Krankenhaus</translation>
    </message>
    <message>
        <source>Museum</source>
        <translation>Museum</translation>
    </message>
    <message>
        <source>Castle</source>
        <translation>Burg</translation>
    </message>
    <message>
        <source>Ruin</source>
        <translation>Ruine</translation>
    </message>
    <message>
        <source>Factory</source>
        <translation>Fabrik</translation>
    </message>
    <message>
        <source>Mine</source>
        <translation>Bergwerk</translation>
    </message>
    <message>
        <source>Tower</source>
        <translation>Turm</translation>
    </message>
    <message>
        <source>Wind Turbine</source>
        <translation>Windrad</translation>
    </message>
    <message>
        <source>Airport</source>
        <translation>Flughafen</translation>
    </message>
    <message>
        <source>Harbour</source>
        <translation>Hafen</translation>
    </message>
    <message>
        <source>Lighthouse</source>
        <translation>Leuchtturm</translation>
    </message>
    <message>
        <source>Bridge</source>
        <translation>Brücke</translation>
    </message>
    <message>
        <source>Filling Station</source>
        <translation>Tankstelle</translation>
    </message>
    <message>
        <source>Parking</source>
        <translation>Parkplatz</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Auskunft</translation>
    </message>
    <message>
        <source>Campsite</source>
        <translation>Zeltplatz</translation>
    </message>
    <message>
        <source>Broad-Leaved Tree</source>
        <translation>Laubbaum</translation>
    </message>
    <message>
        <source>Conifer</source>
        <translation>Nadelbaum</translation>
    </message>
    <message>
        <source>Palm</source>
        <translation>Palme</translation>
    </message>
    <message>
        <source>Spring</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Waterfall</source>
        <translation>Wasserfall</translation>
    </message>
    <message>
        <source>Summit</source>
        <translation>Gipfel</translation>
    </message>
    <message>
        <source>Volcano</source>
        <translation>Vulkan</translation>
    </message>
    <message>
        <source>Cave</source>
        <translation>Höhle</translation>
    </message>
    <message>
        <source>Survey Point</source>
        <translation>Vermessungspunkt</translation>
    </message>
    <message>
        <source>Flag</source>
        <translation>Fahne</translation>
    </message>
    <message>
        <source>Pin</source>
        <translation>Nadel</translation>
    </message>
    <message>
        <source>The file %1 is there already. Replace it?</source>
        <translation>Die Datei %1 gibt es schon. Ersetzen?</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>&amp;No Color</source>
        <translation>&amp;Keine Farbe</translation>
    </message>
    <message>
        <source>&amp;More Colors…</source>
        <translation>&amp;Weitere Farben …</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schrift</translation>
    </message>
    <message>
        <source>AaBbYyZz 123</source>
        <translation>AaBbYyZz 123</translation>
    </message>
    <message>
        <source>“%1” cannot be read as an image: %2</source>
        <translation>„%1“ kann nicht als Bild gelesen werden: %2</translation>
    </message>
    <message>
        <source>“%1” is too large for an image here: %2 × %3 pixels</source>
        <translation>„%1“ ist zu groß für ein Bild: %2 × %3 Pixel</translation>
    </message>
    <message>
        <source>“%1” cannot be saved as an image: %2</source>
        <translation>„%1“ kann nicht als Bild gespeichert werden: %2</translation>
    </message>
    <message>
        <source>there is no image</source>
        <translation>es gibt kein Bild</translation>
    </message>
    <message>
        <source>The file does not exist.</source>
        <translation>Die Datei ist nicht vorhanden.</translation>
    </message>
    <message>
        <source>Too large to look into before it is opened.</source>
        <translation>Zu groß, um vor dem Öffnen hineinzusehen.</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Size: %1</source>
        <translation>Größe: %1</translation>
    </message>
    <message>
        <source>Modified: %1</source>
        <translation>Geändert: %1</translation>
    </message>
    <message>
        <source>Kind: %1</source>
        <translation>Art: %1</translation>
    </message>
    <message>
        <source>Datasets: %1</source>
        <translation>Datensätze: %1</translation>
    </message>
    <message>
        <source>Extent: %1, %2 to %3, %4</source>
        <translation>Ausdehnung: %1, %2 bis %3, %4</translation>
    </message>
    <message>
        <source>Reading…</source>
        <translation>Wird gelesen …</translation>
    </message>
    <message>
        <source>Image: %1 × %2 pixels</source>
        <translation>Bild: %1 × %2 Pixel</translation>
    </message>
    <message>
        <source>The text height must be from %1 to %2 millimeters.</source>
        <translation>Die Texthöhe muss zwischen %1 und %2 Millimetern liegen.</translation>
    </message>
    <message>
        <source>The font “%1” is not installed.</source>
        <translation>Die Schrift „%1“ ist nicht installiert.</translation>
    </message>
    <message>
        <source>The unit is not known.</source>
        <translation>Die Einheit ist nicht bekannt.</translation>
    </message>
    <message>
        <source>The precision must be from 0 to %1 decimals.</source>
        <translation>Die Genauigkeit muss 0 bis %1 Nachkommastellen betragen.</translation>
    </message>
    <message>
        <source>Open the slider</source>
        <translation>Schieberegler öffnen</translation>
    </message>
    <message>
        <source>Line Style</source>
        <translation>Linienstil</translation>
    </message>
    <message>
        <source>Fill Style</source>
        <translation>Füllstil</translation>
    </message>
    <message>
        <source>Point Symbol</source>
        <translation>Punktsymbol</translation>
    </message>
    <message>
        <source>&amp;Styles:</source>
        <translation>&amp;Stile:</translation>
    </message>
    <message>
        <source>Styles</source>
        <translation>Stile</translation>
    </message>
    <message>
        <source>Linear Gradient</source>
        <translation>Linearer Verlauf</translation>
    </message>
    <message>
        <source>Radial Gradient</source>
        <translation>Radialer Verlauf</translation>
    </message>
    <message>
        <source>Conical Gradient</source>
        <translation>Konischer Verlauf</translation>
    </message>
    <message>
        <source>Co&amp;lor:</source>
        <translation>Fa&amp;rbe:</translation>
    </message>
    <message>
        <source>&amp;Background:</source>
        <translation>&amp;Hintergrund:</translation>
    </message>
    <message>
        <source>O&amp;utline:</source>
        <translation>&amp;Umriss:</translation>
    </message>
    <message>
        <source>Outline &amp;width:</source>
        <translation>Umriss&amp;breite:</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>&amp;Breite:</translation>
    </message>
    <message>
        <source>S&amp;ize:</source>
        <translation>&amp;Größe:</translation>
    </message>
    <message>
        <source>&amp;Angle:</source>
        <translation>&amp;Winkel:</translation>
    </message>
    <message>
        <source>O&amp;pacity:</source>
        <translation>&amp;Deckkraft:</translation>
    </message>
    <message>
        <source>&amp;Ramp:</source>
        <translation>&amp;Verlauf:</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Probe</translation>
    </message>
    <message>
        <source>A device or a pipe: nothing is read from it.</source>
        <translation>Ein Gerät oder eine Pipe: daraus wird nichts gelesen.</translation>
    </message>
    <message>
        <source>Driver: %1</source>
        <translation>Treiber: %1</translation>
    </message>
    <message>
        <source>Coordinate system: %1</source>
        <translation>Koordinatensystem: %1</translation>
    </message>
    <message>
        <source>Extent: several coordinate systems</source>
        <translation>Ausdehnung: mehrere Koordinatensysteme</translation>
    </message>
</context>
</TS>
