<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>BarChart</name>
    <message>
        <source>Nothing to show</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CoverWell</name>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drop a picture here, paste one (Ctrl+V) or choose a file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paste</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cover</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a Cover</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pictures (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>That file is not a picture.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No cover.
Drop a picture here.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DiscMenu</name>
    <message>
        <source>&amp;Scan Disc</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Eject</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Internet Search…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add &amp;Manually…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scan Disc</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Entry</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DuplicatesDialog</name>
    <message>
        <source>Duplicates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duplicate groups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Merge</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Merge the chosen entries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Makes one entry of the chosen ones: the first keeps its values and gains every track, link, collection and missing field of the others.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n entries</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Differ in: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Differs within the group</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Same release (%n group(s))</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Other editions (%n group(s))</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>No duplicates in the catalogue.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Entries that are the same release (same release id, disc id or barcode), and the same album in other editions. Highlighted fields differ within their group.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Merge</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EmptyCatalogueHint</name>
    <message>
        <source>&lt;p&gt;&lt;b&gt;Your catalogue is empty.&lt;/b&gt;&lt;/p&gt;&lt;p&gt;Add an album with Edit ▸ Add Entry (Ctrl+N),&lt;br&gt;import files or a folder with File ▸ Import… or by dropping them here,&lt;br&gt;or put a CD in the drive and choose Disc ▸ Scan Disc.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EntryEditor</name>
    <message>
        <source>Edit “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Entry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Album</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tracks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loan, Purchase and More</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Previous Result</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Next Result</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save as New Entry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program deleted this entry. Save as New Entry keeps it, with what you typed, as a new entry; Cancel lets it go.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the tracks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program changed %1 while you were editing. Save keeps what you typed here; Cancel keeps the other program&apos;s change.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In the collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not rated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a year, or a date such as 1999-03-04</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>separate several with commas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” in %2 is not a number: it is kept as text and counts as 0 in the totals.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” in %2 is read as %3 (month first). Type %4 to be sure of it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The title is empty: the album will be listed without a name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is not a date Discary can read for %2. Type a year (1999) or a date (1999-03-04).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the entry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Some of what was typed may not be what you meant.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Anyway</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Anyway</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cover</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The cover could not be written to the data folder.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EntryTableModel</name>
    <message>
        <source>Overdue: due back on %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportDialog</name>
    <message>
        <source>Export “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Web pages (a folder with one page per entry)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discary export, one file (covers inside)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discary export, a folder (covers as files)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comma-separated text (CSV)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Format:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save to:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export to Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export to File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no place to save to was given</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the entry page template could not be found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exporting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save to</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>InternetSearchDialog</name>
    <message>
        <source>Internet Search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Artist and title, a disc identifier, or a result page address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use Result</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server could not be reached. Check the connection and the CDDB server in Preferences.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No results.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n result(s)</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Site</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search for</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Results</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Words</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Barcode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Catalogue Number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A barcode holds only digits.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A barcode has 8, 12 or 13 digits (EAN-8, UPC-A or EAN-13).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The last digit of this barcode should be %1: check the code.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LibraryImportDialog</name>
    <message>
        <source>Import Music Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose Another Library File…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a playlist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No music library file is chosen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Library file: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Music library (*.xml)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Locate iTunes Music Library.xml&apos;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pla&amp;ylist:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LinksTable</name>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add File…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Address…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link a File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link an Address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Links</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;New Catalogue…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open Catalogue…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Shift+I</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import Music &amp;Library…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import Music Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Shift+E</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
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
        <source>&amp;Add Entry…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Edit Entry…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Delete Entries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>C&amp;ollections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;New Collection from Selection…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Rename Collection…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Delete Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Disc</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About Discary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About Discary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;b&gt;Discary %1&lt;/b&gt;&lt;p&gt;A catalogue of your music collection.&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear the filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the Clicked Column</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%1 — %n selected</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>The cover could not be set.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It could not be written to the data folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No file is linked to “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom Fields</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loan, Purchase and More</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filter: %1 is “%2”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Entry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n entries</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove %1 from “%2”, or delete from the catalogue?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove from Collection keeps the entries in the catalogue and in other collections. Delete from Catalogue deletes them everywhere.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove from Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete from Catalogue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete %1 from the catalogue?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rename Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is already a collection named “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete the collection “%1”? Its entries stay in the catalogue.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add to Collection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Catalogue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discary catalogues (*.sqlite)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Catalogue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing was exported.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Entry page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The selected entry as a page, with its tracks and links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Entries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Totals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What to search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Statistics…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>D&amp;uplicates…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PreferencesDialog</name>
    <message>
        <source>Preferences</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>General</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Entry page template:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>yyyy shows the year, MMMM d, yyyy the whole date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Release date format:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show notices for:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import entries that are already in the catalogue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refresh the music library at launch every 30 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of entries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lent out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wanted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Spent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Footer shows:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Covers and Printing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cover cell size:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw a border around covers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The grey behind covers: 0 is black, 1 white</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cover background brightness:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Printed cover width (points):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Printed cover height (points):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Online</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CDDB server (host[:port]):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look discs up in:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an e-mail address or web page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MusicBrainz server:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cover art server:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Contact sent to MusicBrainz:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look up an audio CD as soon as it is mounted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Eject the disc after the lookup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add the only match at once</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Found automatically</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Music library for play links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the music library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Music Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Music libraries (*.xml *.db);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Music library:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PrintDialog</name>
    <message>
        <source>Print</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A list of the entries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Their covers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cover width (points):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cover height (points):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Landscape</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save as PDF…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layout</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PrintLayouts</name>
    <message>
        <source>Info</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prints Title, Artist, Genre, My Rating and Duration for the selected collection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Classical</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prints Title, Artist, Composer, Conductor and Label. (For landscape orientation, use Page Setup)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prints Title, List Price, Purchase At, Purchased On and Price Paid for the selected collection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Borrowed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prints Title, Artist, Borrowed By, Borrowed On and Due Date for the selected collection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prints the current view of the entries in your collection. Use Page Setup to control orientation.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProductText</name>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No CD</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No audio CD with a readable table of contents was found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no CD information available in iTunes, make sure a CD has been inserted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File format not recognized.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No entry matches this request.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The package holds no template.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There was an error moving the file to the data folder and the file has not been moved.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Discary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The catalogue could not be opened.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Another…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Catalogue…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Catalogue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discary catalogues (*.sqlite)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Catalogue</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QtWindowSystem</name>
    <message>
        <source>A file was skipped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n files were skipped.</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Importable files (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import This Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Imports the music files of the folder selected, or else of the folder shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save as PDF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collection.pdf</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF files (*.pdf)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StatisticsDialog</name>
    <message>
        <source>Statistics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Group by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decade</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Genre</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Label</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Artist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Figures per group</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Group</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Entries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Entries per group</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Entries added over time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Group by:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(none)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Entries added per &amp;year:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Entries added per &amp;month:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TrackTable</name>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Artist</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Composer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Track</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move Up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move Down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tracks</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
