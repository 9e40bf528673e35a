<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>kestrel::MainForm</name>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Langue</translation>
    </message>
    <message>
        <source>The new language is used when Kestrel Manager starts again.</source>
        <translation>La nouvelle langue s’applique au prochain démarrage de Kestrel Manager.</translation>
    </message>
    <message>
        <source>&amp;System default</source>
        <translation>Par &amp;défaut du système</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>Load Profile</source>
        <translation>Charger le profil</translation>
    </message>
    <message>
        <source>Save Profile</source>
        <translation>Enregistrer le profil</translation>
    </message>
    <message>
        <source>Save Profile As</source>
        <translation>Enregistrer le profil sous</translation>
    </message>
    <message>
        <source>Load Bank</source>
        <translation>Charger la banque</translation>
    </message>
    <message>
        <source>Save Bank</source>
        <translation>Enregistrer la banque</translation>
    </message>
    <message>
        <source>Save Bank As</source>
        <translation>Enregistrer la banque sous</translation>
    </message>
    <message>
        <source>Load Search Limits</source>
        <translation>Charger les plages de recherche</translation>
    </message>
    <message>
        <source>Save Search Limits</source>
        <translation>Enregistrer les plages de recherche</translation>
    </message>
    <message>
        <source>Save Search Limits As</source>
        <translation>Enregistrer les plages de recherche sous</translation>
    </message>
    <message>
        <source>CS&amp;V Import</source>
        <translation>Import &amp;CSV</translation>
    </message>
    <message>
        <source>CSV &amp;Export...</source>
        <translation>&amp;Export CSV...</translation>
    </message>
    <message>
        <source>&amp;Web Import</source>
        <translation>Import &amp;Web</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>É&amp;dition</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Co&amp;uper</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>C&amp;oller</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Tout sélectionner</translation>
    </message>
    <message>
        <source>Clear Selected Entries</source>
        <translation>Effacer les entrées sélectionnées</translation>
    </message>
    <message>
        <source>Set Selected Entries to Default</source>
        <translation>Remettre les entrées sélectionnées par défaut</translation>
    </message>
    <message>
        <source>Clear Current Bank</source>
        <translation>Effacer la banque actuelle</translation>
    </message>
    <message>
        <source>Clear Search Limits</source>
        <translation>Effacer les plages de recherche</translation>
    </message>
    <message>
        <source>Set Factory Defaults</source>
        <translation>Rétablir les réglages d’usine</translation>
    </message>
    <message>
        <source>Set Default Bank</source>
        <translation>Remettre la banque par défaut</translation>
    </message>
    <message>
        <source>Set Default Limits</source>
        <translation>Remettre les plages par défaut</translation>
    </message>
    <message>
        <source>Organize Banks</source>
        <translation>Organiser les banques</translation>
    </message>
    <message>
        <source>Organize Channels</source>
        <translation>Organiser les canaux</translation>
    </message>
    <message>
        <source>Clear ALL Banks</source>
        <translation>Effacer TOUTES les banques</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>Show &amp;Scan Banks</source>
        <translation>Afficher les banques de &amp;balayage</translation>
    </message>
    <message>
        <source>Show Service &amp;Freqs</source>
        <translation>Afficher les &amp;fréquences de service</translation>
    </message>
    <message>
        <source>Show &amp;All Channels</source>
        <translation>Afficher &amp;tous les canaux</translation>
    </message>
    <message>
        <source>&amp;Next Bank</source>
        <translation>Banque &amp;suivante</translation>
    </message>
    <message>
        <source>&amp;Previous Bank</source>
        <translation>Banque &amp;précédente</translation>
    </message>
    <message>
        <source>&amp;Options</source>
        <translation>&amp;Options</translation>
    </message>
    <message>
        <source>Cable &amp;Type</source>
        <translation>&amp;Type de câble</translation>
    </message>
    <message>
        <source>CO&amp;M Port</source>
        <translation>Port CO&amp;M</translation>
    </message>
    <message>
        <source>&amp;Debug Comm</source>
        <translation>&amp;Débogage de la communication</translation>
    </message>
    <message>
        <source>&amp;Database Address</source>
        <translation>Adresse de la &amp;base de données</translation>
    </message>
    <message>
        <source>&amp;Print Current Bank</source>
        <translation>&amp;Imprimer la banque actuelle</translation>
    </message>
    <message>
        <source>&amp;Scanner</source>
        <translation>&amp;Scanner</translation>
    </message>
    <message>
        <source>&amp;Upload All Banks</source>
        <translation>Envoyer &amp;toutes les banques</translation>
    </message>
    <message>
        <source>Upload &amp;Current Bank</source>
        <translation>Envoyer la banque a&amp;ctuelle</translation>
    </message>
    <message>
        <source>Upload Sea&amp;rch Bank</source>
        <translation>Envoyer la banque de &amp;recherche</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>Aid&amp;e</translation>
    </message>
    <message>
        <source>@ &amp;Home Page</source>
        <translation>@ Page d’&amp;accueil</translation>
    </message>
    <message>
        <source>@ &amp;RadioReference.com</source>
        <translation>@ &amp;RadioReference.com</translation>
    </message>
    <message>
        <source>Show Possible Comm &amp;Errors</source>
        <translation>Afficher les &amp;erreurs de communication possibles</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>À &amp;propos</translation>
    </message>
    <message>
        <source>Kestrel Manager
Version %1

Prepares the memory of a handheld programmable scanner and uploads it over a serial cable.</source>
        <translation>Kestrel Manager
Version %1

Prépare la mémoire d’un scanner portable programmable et la transfère par un câble série.</translation>
    </message>
    <message>
        <source>About Kestrel Manager</source>
        <translation>À propos de Kestrel Manager</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Rétablir</translation>
    </message>
    <message>
        <source>Profile Name:</source>
        <translation>Nom du profil :</translation>
    </message>
    <message>
        <source>Scan Banks</source>
        <translation>Banques de balayage</translation>
    </message>
    <message>
        <source>Bank Name:</source>
        <translation>Nom de la banque :</translation>
    </message>
    <message>
        <source>Sending Bank:</source>
        <translation>Banque en envoi :</translation>
    </message>
    <message>
        <source>Channel List</source>
        <translation>Liste des canaux</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Imprimer</translation>
    </message>
    <message>
        <source>Stored Service Frequencies</source>
        <translation>Fréquences de service enregistrées</translation>
    </message>
    <message>
        <source>Close anyway? What could not be saved will be lost.</source>
        <translation>Fermer quand même ? Ce qui n’a pas pu être enregistré sera perdu.</translation>
    </message>
    <message>
        <source>Nothing was pasted.
</source>
        <translation>Rien n’a été collé.
</translation>
    </message>
    <message>
        <source>The clipboard holds %1 rows; there is room for %2 here.</source>
        <translation>Le presse-papiers contient %1 lignes ; il y a de la place pour %2 ici.</translation>
    </message>
    <message>
        <source>Scanner Timed Out while Receiving!
Please Check Connections to Scanner and Try Again</source>
        <translation>Le scanner n’a pas répondu à temps pendant la réception !
Veuillez vérifier les connexions au scanner et réessayer.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Stop after the frame on its way</source>
        <translation>Arrêter après la trame en cours d’envoi</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Kestrel Manager cannot start: %1.</source>
        <translation>Kestrel Manager ne peut pas démarrer : %1.</translation>
    </message>
</context>
</TS>
