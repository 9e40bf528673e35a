<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>kestrel::MainForm</name>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>The new language is used when Kestrel Manager starts again.</source>
        <translation>Die neue Sprache gilt ab dem nächsten Start von Kestrel Manager.</translation>
    </message>
    <message>
        <source>&amp;System default</source>
        <translation>&amp;Systemstandard</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Load Profile</source>
        <translation>Profil laden</translation>
    </message>
    <message>
        <source>Save Profile</source>
        <translation>Profil speichern</translation>
    </message>
    <message>
        <source>Save Profile As</source>
        <translation>Profil speichern unter</translation>
    </message>
    <message>
        <source>Load Bank</source>
        <translation>Bank laden</translation>
    </message>
    <message>
        <source>Save Bank</source>
        <translation>Bank speichern</translation>
    </message>
    <message>
        <source>Save Bank As</source>
        <translation>Bank speichern unter</translation>
    </message>
    <message>
        <source>Load Search Limits</source>
        <translation>Suchbereiche laden</translation>
    </message>
    <message>
        <source>Save Search Limits</source>
        <translation>Suchbereiche speichern</translation>
    </message>
    <message>
        <source>Save Search Limits As</source>
        <translation>Suchbereiche speichern unter</translation>
    </message>
    <message>
        <source>CS&amp;V Import</source>
        <translation>CS&amp;V-Import</translation>
    </message>
    <message>
        <source>CSV &amp;Export...</source>
        <translation>CSV-&amp;Export...</translation>
    </message>
    <message>
        <source>&amp;Web Import</source>
        <translation>&amp;Web-Import</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>E&amp;infügen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>Alles a&amp;uswählen</translation>
    </message>
    <message>
        <source>Clear Selected Entries</source>
        <translation>Ausgewählte Einträge löschen</translation>
    </message>
    <message>
        <source>Set Selected Entries to Default</source>
        <translation>Ausgewählte Einträge auf Standard setzen</translation>
    </message>
    <message>
        <source>Clear Current Bank</source>
        <translation>Aktuelle Bank löschen</translation>
    </message>
    <message>
        <source>Clear Search Limits</source>
        <translation>Suchbereiche löschen</translation>
    </message>
    <message>
        <source>Set Factory Defaults</source>
        <translation>Werkseinstellungen setzen</translation>
    </message>
    <message>
        <source>Set Default Bank</source>
        <translation>Standardbank setzen</translation>
    </message>
    <message>
        <source>Set Default Limits</source>
        <translation>Standard-Suchbereiche setzen</translation>
    </message>
    <message>
        <source>Organize Banks</source>
        <translation>Bänke ordnen</translation>
    </message>
    <message>
        <source>Organize Channels</source>
        <translation>Kanäle ordnen</translation>
    </message>
    <message>
        <source>Clear ALL Banks</source>
        <translation>ALLE Bänke löschen</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Show &amp;Scan Banks</source>
        <translation>&amp;Scan-Bänke anzeigen</translation>
    </message>
    <message>
        <source>Show Service &amp;Freqs</source>
        <translation>Dienst-&amp;Frequenzen anzeigen</translation>
    </message>
    <message>
        <source>Show &amp;All Channels</source>
        <translation>&amp;Alle Kanäle anzeigen</translation>
    </message>
    <message>
        <source>&amp;Next Bank</source>
        <translation>&amp;Nächste Bank</translation>
    </message>
    <message>
        <source>&amp;Previous Bank</source>
        <translation>&amp;Vorherige Bank</translation>
    </message>
    <message>
        <source>&amp;Options</source>
        <translation>&amp;Optionen</translation>
    </message>
    <message>
        <source>Cable &amp;Type</source>
        <translation>Kabel&amp;typ</translation>
    </message>
    <message>
        <source>CO&amp;M Port</source>
        <translation>CO&amp;M-Anschluss</translation>
    </message>
    <message>
        <source>&amp;Debug Comm</source>
        <translation>&amp;Debug-Kommunikation</translation>
    </message>
    <message>
        <source>&amp;Database Address</source>
        <translation>Daten&amp;bankadresse</translation>
    </message>
    <message>
        <source>&amp;Print Current Bank</source>
        <translation>Aktuelle Bank dr&amp;ucken</translation>
    </message>
    <message>
        <source>&amp;Scanner</source>
        <translation>&amp;Scanner</translation>
    </message>
    <message>
        <source>&amp;Upload All Banks</source>
        <translation>&amp;Alle Bänke übertragen</translation>
    </message>
    <message>
        <source>Upload &amp;Current Bank</source>
        <translation>A&amp;ktuelle Bank übertragen</translation>
    </message>
    <message>
        <source>Upload Sea&amp;rch Bank</source>
        <translation>&amp;Suchbank übertragen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>@ &amp;Home Page</source>
        <translation>@ &amp;Homepage</translation>
    </message>
    <message>
        <source>@ &amp;RadioReference.com</source>
        <translation>@ &amp;RadioReference.com</translation>
    </message>
    <message>
        <source>Show Possible Comm &amp;Errors</source>
        <translation>Mögliche Kommunikations&amp;fehler anzeigen</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>Kestrel Manager
Version %1

Prepares the memory of a handheld programmable scanner and uploads it over a serial cable.</source>
        <translation>Kestrel Manager
Version %1

Bereitet den Speicher eines programmierbaren Handscanners vor und überträgt ihn über ein serielles Kabel.</translation>
    </message>
    <message>
        <source>About Kestrel Manager</source>
        <translation>Über Kestrel Manager</translation>
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
        <source>Profile Name:</source>
        <translation>Profilname:</translation>
    </message>
    <message>
        <source>Scan Banks</source>
        <translation>Scan-Bänke</translation>
    </message>
    <message>
        <source>Bank Name:</source>
        <translation>Bankname:</translation>
    </message>
    <message>
        <source>Sending Bank:</source>
        <translation>Sende Bank:</translation>
    </message>
    <message>
        <source>Channel List</source>
        <translation>Kanalliste</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>Stored Service Frequencies</source>
        <translation>Gespeicherte Dienstfrequenzen</translation>
    </message>
    <message>
        <source>Close anyway? What could not be saved will be lost.</source>
        <translation>Trotzdem schließen? Was nicht gespeichert werden konnte, geht verloren.</translation>
    </message>
    <message>
        <source>Nothing was pasted.
</source>
        <translation>Es wurde nichts eingefügt.
</translation>
    </message>
    <message>
        <source>The clipboard holds %1 rows; there is room for %2 here.</source>
        <translation>Die Zwischenablage enthält %1 Zeilen; hier ist Platz für %2.</translation>
    </message>
    <message>
        <source>Scanner Timed Out while Receiving!
Please Check Connections to Scanner and Try Again</source>
        <translation>Zeitüberschreitung beim Empfang durch den Scanner!
Bitte prüfen Sie die Verbindungen zum Scanner und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Stop after the frame on its way</source>
        <translation>Nach dem gerade gesendeten Rahmen anhalten</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Kestrel Manager cannot start: %1.</source>
        <translation>Kestrel Manager kann nicht starten: %1.</translation>
    </message>
</context>
</TS>
