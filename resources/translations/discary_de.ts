<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>BarChart</name>
    <message>
        <source>Nothing to show</source>
        <translation>Nichts anzuzeigen</translation>
    </message>
</context>
<context>
    <name>CoverWell</name>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Drop a picture here, paste one (Ctrl+V) or choose a file.</source>
        <translation>Ziehen Sie ein Bild hierher, fügen Sie eines ein (Strg+V) oder wählen Sie eine Datei.</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Wählen …</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Cover</source>
        <translation>Cover</translation>
    </message>
    <message>
        <source>Choose a Cover</source>
        <translation>Cover wählen</translation>
    </message>
    <message>
        <source>Pictures (%1)</source>
        <translation>Bilder (%1)</translation>
    </message>
    <message>
        <source>That file is not a picture.</source>
        <translation>Diese Datei ist kein Bild.</translation>
    </message>
    <message>
        <source>No cover.
Drop a picture here.</source>
        <translation>Kein Cover.
Ziehen Sie ein Bild hierher.</translation>
    </message>
</context>
<context>
    <name>DiscMenu</name>
    <message>
        <source>&amp;Scan Disc</source>
        <translation>CD &amp;lesen</translation>
    </message>
    <message>
        <source>&amp;Eject</source>
        <translation>Aus&amp;werfen</translation>
    </message>
    <message>
        <source>&amp;Internet Search…</source>
        <translation>&amp;Internetsuche …</translation>
    </message>
    <message>
        <source>Add &amp;Manually…</source>
        <translation>Von &amp;Hand hinzufügen …</translation>
    </message>
    <message>
        <source>Scan Disc</source>
        <translation>CD lesen</translation>
    </message>
    <message>
        <source>Add Entry</source>
        <translation>Eintrag hinzufügen</translation>
    </message>
</context>
<context>
    <name>DuplicatesDialog</name>
    <message>
        <source>Duplicates</source>
        <translation>Doppelte Einträge</translation>
    </message>
    <message>
        <source>Duplicate groups</source>
        <translation>Gruppen doppelter Einträge</translation>
    </message>
    <message>
        <source>&amp;Merge</source>
        <translation>&amp;Zusammenführen</translation>
    </message>
    <message>
        <source>Merge the chosen entries</source>
        <translation>Die gewählten Einträge zusammenführen</translation>
    </message>
    <message>
        <source>Makes one entry of the chosen ones: the first keeps its values and gains every track, link, collection and missing field of the others.</source>
        <translation>Macht aus den gewählten Einträgen einen: Der erste behält seine Werte und erhält alle Titel, Links, Sammlungen und fehlenden Felder der anderen.</translation>
    </message>
    <message numerus="yes">
        <source>%n entries</source>
        <translation>
            <numerusform>%n Eintrag</numerusform>
            <numerusform>%n Einträge</numerusform>
        </translation>
    </message>
    <message>
        <source>Differ in: %1</source>
        <translation>Unterschiede in: %1</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>Differs within the group</source>
        <translation>Unterscheidet sich innerhalb der Gruppe</translation>
    </message>
    <message numerus="yes">
        <source>Same release (%n group(s))</source>
        <translation>
            <numerusform>Gleiche Veröffentlichung (%n Gruppe)</numerusform>
            <numerusform>Gleiche Veröffentlichung (%n Gruppen)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Other editions (%n group(s))</source>
        <translation>
            <numerusform>Andere Ausgaben (%n Gruppe)</numerusform>
            <numerusform>Andere Ausgaben (%n Gruppen)</numerusform>
        </translation>
    </message>
    <message>
        <source>No duplicates in the catalogue.</source>
        <translation>Keine doppelten Einträge im Katalog.</translation>
    </message>
    <message>
        <source>Entries that are the same release (same release id, disc id or barcode), and the same album in other editions. Highlighted fields differ within their group.</source>
        <translation>Einträge derselben Veröffentlichung (gleiche Release-ID, Disc-ID oder gleicher Barcode) und dasselbe Album in anderen Ausgaben. Hervorgehobene Felder unterscheiden sich innerhalb ihrer Gruppe.</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Zusammenführen</translation>
    </message>
</context>
<context>
    <name>EmptyCatalogueHint</name>
    <message>
        <source>&lt;p&gt;&lt;b&gt;Your catalogue is empty.&lt;/b&gt;&lt;/p&gt;&lt;p&gt;Add an album with Edit ▸ Add Entry (Ctrl+N),&lt;br&gt;import files or a folder with File ▸ Import… or by dropping them here,&lt;br&gt;or put a CD in the drive and choose Disc ▸ Scan Disc.&lt;/p&gt;</source>
        <translation>&lt;p&gt;&lt;b&gt;Ihr Katalog ist leer.&lt;/b&gt;&lt;/p&gt;&lt;p&gt;Fügen Sie ein Album mit Bearbeiten ▸ Eintrag hinzufügen (Strg+N) hinzu,&lt;br&gt;importieren Sie Dateien oder einen Ordner mit Datei ▸ Importieren … oder indem Sie sie hierher ziehen,&lt;br&gt;oder legen Sie eine CD ein und wählen Sie CD ▸ CD lesen.&lt;/p&gt;</translation>
    </message>
</context>
<context>
    <name>EntryEditor</name>
    <message>
        <source>Edit “%1”</source>
        <translation>„%1“ bearbeiten</translation>
    </message>
    <message>
        <source>Add Entry</source>
        <translation>Eintrag hinzufügen</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Tracks</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Links</source>
        <translation>Verweise</translation>
    </message>
    <message>
        <source>Loan, Purchase and More</source>
        <translation>Verleih, Kauf und mehr</translation>
    </message>
    <message>
        <source>Previous Result</source>
        <translation>Vorheriges Ergebnis</translation>
    </message>
    <message>
        <source>Next Result</source>
        <translation>Nächstes Ergebnis</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Save as New Entry</source>
        <translation>Als neuen Eintrag sichern</translation>
    </message>
    <message>
        <source>Another program deleted this entry. Save as New Entry keeps it, with what you typed, as a new entry; Cancel lets it go.</source>
        <translation>Ein anderes Programm hat diesen Eintrag gelöscht. „Als neuen Eintrag sichern“ behält ihn mit Ihren Eingaben als neuen Eintrag; „Abbrechen“ gibt ihn auf.</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>„%1“</translation>
    </message>
    <message>
        <source>the tracks</source>
        <translation>die Titel</translation>
    </message>
    <message>
        <source>the links</source>
        <translation>die Verweise</translation>
    </message>
    <message>
        <source>Another program changed %1 while you were editing. Save keeps what you typed here; Cancel keeps the other program&apos;s change.</source>
        <translation>Ein anderes Programm hat %1 geändert, während Sie bearbeitet haben. „Sichern“ behält Ihre Eingaben; „Abbrechen“ behält die Änderung des anderen Programms.</translation>
    </message>
    <message>
        <source>, </source>
        <translation>, </translation>
    </message>
    <message>
        <source>In the collection</source>
        <translation>In der Sammlung</translation>
    </message>
    <message>
        <source>Not rated</source>
        <translation>Nicht bewertet</translation>
    </message>
    <message>
        <source>a year, or a date such as 1999-03-04</source>
        <translation>ein Jahr oder ein Datum wie 1999-03-04</translation>
    </message>
    <message>
        <source>separate several with commas</source>
        <translation>mehrere durch Kommas trennen</translation>
    </message>
    <message>
        <source>“%1” in %2 is not a number: it is kept as text and counts as 0 in the totals.</source>
        <translation>„%1“ in %2 ist keine Zahl: Es bleibt als Text erhalten und zählt in den Summen als 0.</translation>
    </message>
    <message>
        <source>“%1” in %2 is read as %3 (month first). Type %4 to be sure of it.</source>
        <translation>„%1“ in %2 wird als %3 gelesen (Monat zuerst). Geben Sie %4 ein, um sicherzugehen.</translation>
    </message>
    <message>
        <source>The title is empty: the album will be listed without a name.</source>
        <translation>Der Titel ist leer: Das Album wird ohne Namen aufgeführt.</translation>
    </message>
    <message>
        <source>“%1” is not a date Discary can read for %2. Type a year (1999) or a date (1999-03-04).</source>
        <translation>„%1“ ist kein Datum, das Discary für %2 lesen kann. Geben Sie ein Jahr (1999) oder ein Datum (1999-03-04) ein.</translation>
    </message>
    <message>
        <source>Check the entry</source>
        <translation>Eintrag prüfen</translation>
    </message>
    <message>
        <source>Some of what was typed may not be what you meant.</source>
        <translation>Manches, was eingegeben wurde, ist vielleicht nicht so gemeint.</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Save Anyway</source>
        <translation>Trotzdem sichern</translation>
    </message>
    <message>
        <source>Add Anyway</source>
        <translation>Trotzdem hinzufügen</translation>
    </message>
    <message>
        <source>Cover</source>
        <translation>Cover</translation>
    </message>
    <message>
        <source>The cover could not be written to the data folder.</source>
        <translation>Das Cover konnte nicht in den Datenordner geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>EntryTableModel</name>
    <message>
        <source>Overdue: due back on %1</source>
        <translation>Überfällig: Rückgabe war am %1</translation>
    </message>
</context>
<context>
    <name>ExportDialog</name>
    <message>
        <source>Export “%1”</source>
        <translation>„%1“ exportieren</translation>
    </message>
    <message>
        <source>Web pages (a folder with one page per entry)</source>
        <translation>Webseiten (ein Ordner mit einer Seite je Eintrag)</translation>
    </message>
    <message>
        <source>Discary export, one file (covers inside)</source>
        <translation>Discary-Export, eine Datei (mit Covern)</translation>
    </message>
    <message>
        <source>Discary export, a folder (covers as files)</source>
        <translation>Discary-Export, ein Ordner (Cover als Dateien)</translation>
    </message>
    <message>
        <source>Comma-separated text (CSV)</source>
        <translation>Kommagetrennter Text (CSV)</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Wählen …</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>Format:</translation>
    </message>
    <message>
        <source>Save to:</source>
        <translation>Sichern unter:</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Export to Folder</source>
        <translation>In Ordner exportieren</translation>
    </message>
    <message>
        <source>Export to File</source>
        <translation>In Datei exportieren</translation>
    </message>
    <message>
        <source>no place to save to was given</source>
        <translation>es wurde kein Speicherort angegeben</translation>
    </message>
    <message>
        <source>the entry page template could not be found</source>
        <translation>die Vorlage der Eintragsseite wurde nicht gefunden</translation>
    </message>
    <message>
        <source>Exporting</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>Save to</source>
        <translation>Sichern unter</translation>
    </message>
</context>
<context>
    <name>InternetSearchDialog</name>
    <message>
        <source>Internet Search</source>
        <translation>Internetsuche</translation>
    </message>
    <message>
        <source>Artist and title, a disc identifier, or a result page address</source>
        <translation>Interpret und Titel, eine Disc-Kennung oder die Adresse einer Ergebnisseite</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Use Result</source>
        <translation>Ergebnis übernehmen</translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation>Suche läuft …</translation>
    </message>
    <message>
        <source>The server could not be reached. Check the connection and the CDDB server in Preferences.</source>
        <translation>Der Server ist nicht erreichbar. Prüfen Sie die Verbindung und den CDDB-Server in den Einstellungen.</translation>
    </message>
    <message>
        <source>No results.</source>
        <translation>Keine Ergebnisse.</translation>
    </message>
    <message numerus="yes">
        <source>%n result(s)</source>
        <translation>
            <numerusform>%n Ergebnis</numerusform>
            <numerusform>%n Ergebnisse</numerusform>
        </translation>
    </message>
    <message>
        <source>Site</source>
        <translation>Quelle</translation>
    </message>
    <message>
        <source>Search for</source>
        <translation>Suchen nach</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>Wörter</translation>
    </message>
    <message>
        <source>Barcode</source>
        <translation>Barcode</translation>
    </message>
    <message>
        <source>Catalogue Number</source>
        <translation>Katalognummer</translation>
    </message>
    <message>
        <source>Search by</source>
        <translation>Suchen nach</translation>
    </message>
    <message>
        <source>A barcode holds only digits.</source>
        <translation>Ein Barcode besteht nur aus Ziffern.</translation>
    </message>
    <message>
        <source>A barcode has 8, 12 or 13 digits (EAN-8, UPC-A or EAN-13).</source>
        <translation>Ein Barcode hat 8, 12 oder 13 Ziffern (EAN-8, UPC-A oder EAN-13).</translation>
    </message>
    <message>
        <source>The last digit of this barcode should be %1: check the code.</source>
        <translation>Die letzte Ziffer dieses Barcodes müsste %1 sein: Bitte den Code prüfen.</translation>
    </message>
</context>
<context>
    <name>LibraryImportDialog</name>
    <message>
        <source>Import Music Library</source>
        <translation>Musikbibliothek importieren</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>Choose Another Library File…</source>
        <translation>Andere Bibliotheksdatei wählen …</translation>
    </message>
    <message>
        <source>Choose a playlist</source>
        <translation>Wiedergabeliste wählen</translation>
    </message>
    <message>
        <source>No music library file is chosen.</source>
        <translation>Es ist keine Musikbibliotheksdatei gewählt.</translation>
    </message>
    <message>
        <source>Library file: %1</source>
        <translation>Bibliotheksdatei: %1</translation>
    </message>
    <message>
        <source>Music library (*.xml)</source>
        <translation>Musikbibliothek (*.xml)</translation>
    </message>
    <message>
        <source>Locate iTunes Music Library.xml&apos;</source>
        <translation>Musikbibliothek (XML) suchen</translation>
    </message>
    <message>
        <source>Pla&amp;ylist:</source>
        <translation>&amp;Wiedergabeliste:</translation>
    </message>
</context>
<context>
    <name>LinksTable</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Add File…</source>
        <translation>Datei hinzufügen …</translation>
    </message>
    <message>
        <source>Add Address…</source>
        <translation>Adresse hinzufügen …</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Link a File</source>
        <translation>Datei verknüpfen</translation>
    </message>
    <message>
        <source>Link an Address</source>
        <translation>Adresse verknüpfen</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>Adresse:</translation>
    </message>
    <message>
        <source>Links</source>
        <translation>Verweise</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;New Catalogue…</source>
        <translation>&amp;Neuer Katalog …</translation>
    </message>
    <message>
        <source>&amp;Open Catalogue…</source>
        <translation>Katalog ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation>&amp;Importieren …</translation>
    </message>
    <message>
        <source>Ctrl+Shift+I</source>
        <translation>Ctrl+Shift+I</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>Import Music &amp;Library…</source>
        <translation>Musik&amp;bibliothek importieren …</translation>
    </message>
    <message>
        <source>Import Music Library</source>
        <translation>Musikbibliothek importieren</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>&amp;Exportieren …</translation>
    </message>
    <message>
        <source>Ctrl+Shift+E</source>
        <translation>Ctrl+Shift+E</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>&amp;Drucken …</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <translation>&amp;Einstellungen …</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Add Entry…</source>
        <translation>Eintrag &amp;hinzufügen …</translation>
    </message>
    <message>
        <source>&amp;Edit Entry…</source>
        <translation>Eintrag &amp;bearbeiten …</translation>
    </message>
    <message>
        <source>&amp;Delete Entries</source>
        <translation>Einträge &amp;löschen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Spalten</translation>
    </message>
    <message>
        <source>&amp;Filter</source>
        <translation>&amp;Filter</translation>
    </message>
    <message>
        <source>C&amp;ollections</source>
        <translation>&amp;Sammlungen</translation>
    </message>
    <message>
        <source>&amp;New Collection from Selection…</source>
        <translation>&amp;Neue Sammlung aus Auswahl …</translation>
    </message>
    <message>
        <source>&amp;Rename Collection…</source>
        <translation>Sammlung &amp;umbenennen …</translation>
    </message>
    <message>
        <source>&amp;Delete Collection</source>
        <translation>Sammlung &amp;löschen</translation>
    </message>
    <message>
        <source>&amp;Disc</source>
        <translation>&amp;CD</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About Discary</source>
        <translation>Ü&amp;ber Discary</translation>
    </message>
    <message>
        <source>About Discary</source>
        <translation>Über Discary</translation>
    </message>
    <message>
        <source>&lt;b&gt;Discary %1&lt;/b&gt;&lt;p&gt;A catalogue of your music collection.&lt;/p&gt;</source>
        <translation>&lt;b&gt;Discary %1&lt;/b&gt;&lt;p&gt;Ein Katalog Ihrer Musiksammlung.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Alle zeigen</translation>
    </message>
    <message>
        <source>Clear the filter</source>
        <translation>Filter aufheben</translation>
    </message>
    <message>
        <source>Search %1</source>
        <translation>%1 durchsuchen</translation>
    </message>
    <message>
        <source>the Clicked Column</source>
        <translation>die angeklickte Spalte</translation>
    </message>
    <message numerus="yes">
        <source>%1 — %n selected</source>
        <translation>
            <numerusform>%1 — %n ausgewählt</numerusform>
            <numerusform>%1 — %n ausgewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>The cover could not be set.</source>
        <translation>Das Cover konnte nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>It could not be written to the data folder.</source>
        <translation>Es konnte nicht in den Datenordner geschrieben werden.</translation>
    </message>
    <message>
        <source>No file is linked to “%1”.</source>
        <translation>Mit „%1“ ist keine Datei verknüpft.</translation>
    </message>
    <message>
        <source>Custom Fields</source>
        <translation>Eigene Felder</translation>
    </message>
    <message>
        <source>Dates</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>Loan, Purchase and More</source>
        <translation>Verleih, Kauf und mehr</translation>
    </message>
    <message>
        <source>Filter: %1 is “%2”</source>
        <translation>Filter: %1 ist „%2“</translation>
    </message>
    <message>
        <source>Add Entry</source>
        <translation>Eintrag hinzufügen</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>„%1“</translation>
    </message>
    <message numerus="yes">
        <source>%n entries</source>
        <translation>
            <numerusform>%n Eintrag</numerusform>
            <numerusform>%n Einträge</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Remove %1 from “%2”, or delete from the catalogue?</source>
        <translation>%1 aus „%2“ entfernen oder aus dem Katalog löschen?</translation>
    </message>
    <message>
        <source>Remove from Collection keeps the entries in the catalogue and in other collections. Delete from Catalogue deletes them everywhere.</source>
        <translation>„Aus Sammlung entfernen“ behält die Einträge im Katalog und in anderen Sammlungen. „Aus Katalog löschen“ löscht sie überall.</translation>
    </message>
    <message>
        <source>Remove from Collection</source>
        <translation>Aus Sammlung entfernen</translation>
    </message>
    <message>
        <source>Delete from Catalogue</source>
        <translation>Aus Katalog löschen</translation>
    </message>
    <message>
        <source>Delete %1 from the catalogue?</source>
        <translation>%1 aus dem Katalog löschen?</translation>
    </message>
    <message>
        <source>New Collection</source>
        <translation>Neue Sammlung</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Rename Collection</source>
        <translation>Sammlung umbenennen</translation>
    </message>
    <message>
        <source>There is already a collection named “%1”.</source>
        <translation>Es gibt schon eine Sammlung namens „%1“.</translation>
    </message>
    <message>
        <source>Delete Collection</source>
        <translation>Sammlung löschen</translation>
    </message>
    <message>
        <source>Delete the collection “%1”? Its entries stay in the catalogue.</source>
        <translation>Die Sammlung „%1“ löschen? Ihre Einträge bleiben im Katalog.</translation>
    </message>
    <message>
        <source>Add to Collection</source>
        <translation>Zur Sammlung hinzufügen</translation>
    </message>
    <message>
        <source>New Catalogue</source>
        <translation>Neuer Katalog</translation>
    </message>
    <message>
        <source>Discary catalogues (*.sqlite)</source>
        <translation>Discary-Kataloge (*.sqlite)</translation>
    </message>
    <message>
        <source>Open Catalogue</source>
        <translation>Katalog öffnen</translation>
    </message>
    <message>
        <source>Nothing was exported.</source>
        <translation>Es wurde nichts exportiert.</translation>
    </message>
    <message>
        <source>Saved to %1</source>
        <translation>Gesichert unter %1</translation>
    </message>
    <message>
        <source>Collections</source>
        <translation>Sammlungen</translation>
    </message>
    <message>
        <source>Entry page</source>
        <translation>Eintragsseite</translation>
    </message>
    <message>
        <source>The selected entry as a page, with its tracks and links</source>
        <translation>Der ausgewählte Eintrag als Seite, mit Titeln und Verweisen</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>Totals</source>
        <translation>Summen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>What to search</source>
        <translation>Was durchsucht wird</translation>
    </message>
    <message>
        <source>&amp;Statistics…</source>
        <translation>S&amp;tatistik…</translation>
    </message>
    <message>
        <source>D&amp;uplicates…</source>
        <translation>&amp;Doppelte Einträge…</translation>
    </message>
</context>
<context>
    <name>PreferencesDialog</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Entry page template:</source>
        <translation>Vorlage der Eintragsseite:</translation>
    </message>
    <message>
        <source>yyyy shows the year, MMMM d, yyyy the whole date</source>
        <translation>yyyy zeigt das Jahr, d. MMMM yyyy das ganze Datum</translation>
    </message>
    <message>
        <source>Release date format:</source>
        <translation>Format des Erscheinungsdatums:</translation>
    </message>
    <message>
        <source> s</source>
        <translation> s</translation>
    </message>
    <message>
        <source>Show notices for:</source>
        <translation>Hinweise zeigen für:</translation>
    </message>
    <message>
        <source>Import entries that are already in the catalogue</source>
        <translation>Einträge importieren, die schon im Katalog sind</translation>
    </message>
    <message>
        <source>Refresh the music library at launch every 30 days</source>
        <translation>Musikbibliothek beim Start alle 30 Tage auffrischen</translation>
    </message>
    <message>
        <source>List</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Number of entries</source>
        <translation>Anzahl der Einträge</translation>
    </message>
    <message>
        <source>Lent out</source>
        <translation>Verliehen</translation>
    </message>
    <message>
        <source>Wanted</source>
        <translation>Gesucht</translation>
    </message>
    <message>
        <source>Discs</source>
        <translation>Discs</translation>
    </message>
    <message>
        <source>Play time</source>
        <translation>Spieldauer</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Spent</source>
        <translation>Ausgegeben</translation>
    </message>
    <message>
        <source>Footer shows:</source>
        <translation>Fußzeile zeigt:</translation>
    </message>
    <message>
        <source>Covers and Printing</source>
        <translation>Cover und Druck</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Cover cell size:</source>
        <translation>Größe der Cover-Zelle:</translation>
    </message>
    <message>
        <source>Draw a border around covers</source>
        <translation>Rahmen um Cover zeichnen</translation>
    </message>
    <message>
        <source>The grey behind covers: 0 is black, 1 white</source>
        <translation>Das Grau hinter Covern: 0 ist Schwarz, 1 Weiß</translation>
    </message>
    <message>
        <source>Cover background brightness:</source>
        <translation>Helligkeit des Cover-Hintergrunds:</translation>
    </message>
    <message>
        <source>Printed cover width (points):</source>
        <translation>Breite gedruckter Cover (Punkt):</translation>
    </message>
    <message>
        <source>Printed cover height (points):</source>
        <translation>Höhe gedruckter Cover (Punkt):</translation>
    </message>
    <message>
        <source>Online</source>
        <translation>Online</translation>
    </message>
    <message>
        <source>CDDB server (host[:port]):</source>
        <translation>CDDB-Server (Host[:Port]):</translation>
    </message>
    <message>
        <source>Look discs up in:</source>
        <translation>CDs nachschlagen in:</translation>
    </message>
    <message>
        <source>an e-mail address or web page</source>
        <translation>eine E-Mail-Adresse oder Webseite</translation>
    </message>
    <message>
        <source>MusicBrainz server:</source>
        <translation>MusicBrainz-Server:</translation>
    </message>
    <message>
        <source>Cover art server:</source>
        <translation>Cover-Server:</translation>
    </message>
    <message>
        <source>Contact sent to MusicBrainz:</source>
        <translation>An MusicBrainz gesendeter Kontakt:</translation>
    </message>
    <message>
        <source>Look up an audio CD as soon as it is mounted</source>
        <translation>Audio-CD nachschlagen, sobald sie eingehängt ist</translation>
    </message>
    <message>
        <source>Eject the disc after the lookup</source>
        <translation>CD nach dem Nachschlagen auswerfen</translation>
    </message>
    <message>
        <source>Add the only match at once</source>
        <translation>Einzigen Treffer sofort hinzufügen</translation>
    </message>
    <message>
        <source>Found automatically</source>
        <translation>Automatisch gefunden</translation>
    </message>
    <message>
        <source>Music library for play links</source>
        <translation>Musikbibliothek für Abspiel-Links</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Auswählen…</translation>
    </message>
    <message>
        <source>Choose the music library</source>
        <translation>Musikbibliothek auswählen</translation>
    </message>
    <message>
        <source>Music Library</source>
        <translation>Musikbibliothek</translation>
    </message>
    <message>
        <source>Music libraries (*.xml *.db);;All files (*)</source>
        <translation>Musikbibliotheken (*.xml *.db);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Music library:</source>
        <translation>Musikbibliothek:</translation>
    </message>
</context>
<context>
    <name>PrintDialog</name>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>A list of the entries</source>
        <translation>Eine Liste der Einträge</translation>
    </message>
    <message>
        <source>Their covers</source>
        <translation>Ihre Cover</translation>
    </message>
    <message>
        <source>Cover width (points):</source>
        <translation>Cover-Breite (Punkt):</translation>
    </message>
    <message>
        <source>Cover height (points):</source>
        <translation>Cover-Höhe (Punkt):</translation>
    </message>
    <message>
        <source>Landscape</source>
        <translation>Querformat</translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>Drucken …</translation>
    </message>
    <message>
        <source>Save as PDF…</source>
        <translation>Als PDF sichern …</translation>
    </message>
    <message>
        <source>Layout</source>
        <translation>Layout</translation>
    </message>
</context>
<context>
    <name>PrintLayouts</name>
    <message>
        <source>Info</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>Prints Title, Artist, Genre, My Rating and Duration for the selected collection.</source>
        <translation>Druckt Titel, Interpret, Genre, Meine Bewertung und Spieldauer der gewählten Sammlung.</translation>
    </message>
    <message>
        <source>Classical</source>
        <translation>Klassik</translation>
    </message>
    <message>
        <source>Prints Title, Artist, Composer, Conductor and Label. (For landscape orientation, use Page Setup)</source>
        <translation>Druckt Titel, Interpret, Komponist, Dirigent und Plattenfirma. (Für Querformat die Seiteneinstellungen verwenden.)</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Prints Title, List Price, Purchase At, Purchased On and Price Paid for the selected collection.</source>
        <translation>Druckt Titel, Listenpreis, Gekauft bei, Gekauft am und Bezahlten Preis der gewählten Sammlung.</translation>
    </message>
    <message>
        <source>Borrowed</source>
        <translation>Ausgeliehen</translation>
    </message>
    <message>
        <source>Prints Title, Artist, Borrowed By, Borrowed On and Due Date for the selected collection.</source>
        <translation>Druckt Titel, Interpret, Ausgeliehen von, Ausgeliehen am und Rückgabe bis der gewählten Sammlung.</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Eigenes</translation>
    </message>
    <message>
        <source>Prints the current view of the entries in your collection. Use Page Setup to control orientation.</source>
        <translation>Druckt die aktuelle Ansicht der Einträge Ihrer Sammlung. Die Ausrichtung legen die Seiteneinstellungen fest.</translation>
    </message>
</context>
<context>
    <name>ProductText</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>No CD</source>
        <translation>Keine CD</translation>
    </message>
    <message>
        <source>No audio CD with a readable table of contents was found.</source>
        <translation>Es wurde keine Audio-CD mit lesbarem Inhaltsverzeichnis gefunden.</translation>
    </message>
    <message>
        <source>There is no CD information available in iTunes, make sure a CD has been inserted.</source>
        <translation>Der Musikspieler hat keine Angaben zu einer CD; prüfen Sie, ob eine CD eingelegt ist.</translation>
    </message>
    <message>
        <source>File format not recognized.</source>
        <translation>Dateiformat nicht erkannt.</translation>
    </message>
    <message>
        <source>No entry matches this request.</source>
        <translation>Kein Eintrag passt zu dieser Anfrage.</translation>
    </message>
    <message>
        <source>The package holds no template.</source>
        <translation>Das Paket enthält keine Vorlage.</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>File Error</source>
        <translation>Dateifehler</translation>
    </message>
    <message>
        <source>There was an error moving the file to the data folder and the file has not been moved.</source>
        <translation>Beim Verschieben der Datei in den Datenordner ist ein Fehler aufgetreten; die Datei wurde nicht verschoben.</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Discary</source>
        <translation>Discary</translation>
    </message>
    <message>
        <source>The catalogue could not be opened.</source>
        <translation>Der Katalog konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Open Another…</source>
        <translation>Anderen öffnen …</translation>
    </message>
    <message>
        <source>New Catalogue…</source>
        <translation>Neuer Katalog …</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Open Catalogue</source>
        <translation>Katalog öffnen</translation>
    </message>
    <message>
        <source>Discary catalogues (*.sqlite)</source>
        <translation>Discary-Kataloge (*.sqlite)</translation>
    </message>
    <message>
        <source>New Catalogue</source>
        <translation>Neuer Katalog</translation>
    </message>
</context>
<context>
    <name>QtWindowSystem</name>
    <message>
        <source>A file was skipped.</source>
        <translation>Eine Datei wurde übersprungen.</translation>
    </message>
    <message numerus="yes">
        <source>%n files were skipped.</source>
        <translation>
            <numerusform>%n Datei wurde übersprungen.</numerusform>
            <numerusform>%n Dateien wurden übersprungen.</numerusform>
        </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Importable files (%1)</source>
        <translation>Importierbare Dateien (%1)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Import This Folder</source>
        <translation>Diesen Ordner importieren</translation>
    </message>
    <message>
        <source>Imports the music files of the folder selected, or else of the folder shown.</source>
        <translation>Importiert die Musikdateien des ausgewählten Ordners, sonst des angezeigten.</translation>
    </message>
    <message>
        <source>Save as PDF</source>
        <translation>Als PDF sichern</translation>
    </message>
    <message>
        <source>Collection.pdf</source>
        <translation>Sammlung.pdf</translation>
    </message>
    <message>
        <source>PDF files (*.pdf)</source>
        <translation>PDF-Dateien (*.pdf)</translation>
    </message>
</context>
<context>
    <name>StatisticsDialog</name>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>Group by</source>
        <translation>Gruppieren nach</translation>
    </message>
    <message>
        <source>Decade</source>
        <translation>Jahrzehnt</translation>
    </message>
    <message>
        <source>Genre</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Plattenfirma</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Interpret</translation>
    </message>
    <message>
        <source>Figures per group</source>
        <translation>Zahlen je Gruppe</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>Play Time</source>
        <translation>Spieldauer</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Entries per group</source>
        <translation>Einträge je Gruppe</translation>
    </message>
    <message>
        <source>Entries added over time</source>
        <translation>Hinzugefügte Einträge im Zeitverlauf</translation>
    </message>
    <message>
        <source>&amp;Group by:</source>
        <translation>&amp;Gruppieren nach:</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(keine Angabe)</translation>
    </message>
    <message>
        <source>Entries added per &amp;year:</source>
        <translation>Hinzugefügte Einträge pro &amp;Jahr:</translation>
    </message>
    <message>
        <source>Entries added per &amp;month:</source>
        <translation>Hinzugefügte Einträge pro &amp;Monat:</translation>
    </message>
</context>
<context>
    <name>TrackTable</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Interpret</translation>
    </message>
    <message>
        <source>Composer</source>
        <translation>Komponist</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Add Track</source>
        <translation>Titel hinzufügen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Total %1</source>
        <translation>Gesamt %1</translation>
    </message>
    <message>
        <source>Tracks</source>
        <translation>Titel</translation>
    </message>
</context>
</TS>
