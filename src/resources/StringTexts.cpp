// The texts themselves: a table of data, long because there are many. Blanks at the ends of a text belong to it: texts
// are put together from several of them.

#include "resources/StringTexts.h"

namespace zephrin::resources {

namespace {

constexpr StringRow rows[] = {
    // Table tab.
    {101, {u"Select the Tables you wish to include in your Query",
           u"Choisissez les tables à inclure dans la requête",
           u"Wählen Sie die Tabellen für Ihre Abfrage",
           u"Seleccione las tablas que desea incluir en la consulta"}},
    {102, {u"Available Tables", u"Tables disponibles", u"Verfügbare Tabellen", u"Tablas disponibles"}},
    {103, {u"Selected Tables", u"Tables choisies", u"Gewählte Tabellen", u"Tablas seleccionadas"}},

    // Join tab.
    {104, {u"Build Joins Between Selected Tables and Fields",
           u"Joindre les tables et les champs choisis",
           u"Gewählte Tabellen und Felder verknüpfen",
           u"Combinar las tablas y los campos seleccionados"}},
    {105, {u"Join From Table", u"De la table", u"Von Tabelle", u"Desde la tabla"}},
    {106, {u"Join To Table", u"À la table", u"Zu Tabelle", u"A la tabla"}},
    {107, {u"Join From Field", u"Du champ", u"Von Feld", u"Desde el campo"}},
    {108, {u"Join To Field", u"Au champ", u"Zu Feld", u"Al campo"}},
    // Field tab.
    {109, {u"Select the Fields you wish to include in your output",
           u"Choisissez les champs à afficher",
           u"Wählen Sie die Felder für die Ausgabe",
           u"Seleccione los campos que desea incluir en el resultado"}},
    {110, {u"Available Fields", u"Champs disponibles", u"Verfügbare Felder", u"Campos disponibles"}},
    {111, {u"Output Fields", u"Champs affichés", u"Ausgabefelder", u"Campos de salida"}},

    // Join tab.
    {112, {u"Join Type", u"Type de jointure", u"Art der Verknüpfung", u"Tipo de combinación"}},
    {113, {u"Add Join", u"Ajouter la jointure", u"Verknüpfung hinzufügen", u"Agregar combinación"}},
    {114, {u"Remove Joins", u"Supprimer les jointures", u"Verknüpfungen entfernen", u"Quitar combinaciones"}},
    {115, {u"Joins", u"Jointures", u"Verknüpfungen", u"Combinaciones"}},

    // Build-query tab: legend of the grid, headings, frames.
    {116, {u"Field", u"Champ", u"Feld", u"Campo"}},
    {117, {u"Or", u"Ou", u"Oder", u"O"}},
    {118, {u"Execute", u"Exécuter", u"Ausführen", u"Ejecutar"}},
    {119, {u"Value", u"Valeur", u"Wert", u"Valor"}},
    {120, {u"SQL", u"SQL", u"SQL", u"SQL"}},
    {121, {u"Top", u"Top", u"Top", u"Top"}},
    {122, {u"Options", u"Options", u"Optionen", u"Opciones"}},
    {123, {u"Having criteria", u"Critères Having", u"Having-Kriterien", u"Criterios Having"}},
    {124, {u"+ Split", u"+ Volet", u"+ Teilen", u"+ Dividir"}},
    {125, {u"- Split", u"- Volet", u"- Teilen", u"- Dividir"}},
    {126, {u"Fields", u"Champs", u"Felder", u"Campos"}},
    {127, {u"Operators", u"Opérateurs", u"Operatoren", u"Operadores"}},
    {128, {u"First value", u"Première valeur", u"Erster Wert", u"Primer valor"}},
    {129, {u"Second value", u"Deuxième valeur", u"Zweiter Wert", u"Segundo valor"}},
    {130, {u"Combine", u"Combiner", u"Kombinieren", u"Combinar"}},
    {131, {u"Edit", u"Modifier", u"Bearbeiten", u"Editar"}},
    {132, {u"Query", u"Requête", u"Abfrage", u"Consulta"}},
    {133, {u"Query Results", u"Résultats de la requête", u"Abfrageergebnisse", u"Resultados de la consulta"}},
    {134, {u"Sort", u"Trier", u"Sortieren", u"Ordenar"}},
    {135, {u"Messages", u"Messages", u"Meldungen", u"Mensajes"}},

    // Calculated-field dialog.
    {138, {u"Text", u"Texte", u"Text", u"Texto"}},
    {139, {u"Date", u"Date", u"Datum", u"Fecha"}},
    {140, {u"Math", u"Maths", u"Mathematik", u"Matemáticas"}},
    {141, {u"Logical", u"Logique", u"Logik", u"Lógica"}},
    {142, {u"Functions", u"Fonctions", u"Funktionen", u"Funciones"}},
    {143, {u"Operators", u"Opérateurs", u"Operatoren", u"Operadores"}},
    {144, {u"Fields", u"Champs", u"Felder", u"Campos"}},
    {145, {u"Expression", u"Expression", u"Ausdruck", u"Expresión"}},
    {146, {u"Alias : ", u"Alias : ", u"Alias : ", u"Alias : "}},
    {147, {u"Show in Output", u"Afficher dans le résultat", u"In der Ausgabe zeigen", u"Mostrar en el resultado"}},
    {148, {u"&OK", u"&OK", u"&OK", u"&Aceptar"}},
    {149, {u"&Cancel", u"&Annuler", u"&Abbrechen", u"&Cancelar"}},
    {150, {u"C&lear", u"&Effacer", u"&Leeren", u"&Borrar"}},
    {151, {u" Calculated Fields", u" Champs calculés", u" Berechnete Felder", u" Campos calculados"}},

    // Join-type dialog.
    {152, {u"1: All records from right and left Tables that match.",
           u"1 : Tous les enregistrements des tables de gauche et de droite qui correspondent.",
           u"1: Alle Datensätze der linken und der rechten Tabelle, die zueinander passen.",
           u"1: Todos los registros de las tablas izquierda y derecha que coinciden."}},
    {153, {u"2: All records from left table and only those records from the right Table that match",
           u"2 : Tous les enregistrements de la table de gauche et seulement ceux de la table de droite qui "
           u"correspondent",
           u"2: Alle Datensätze der linken Tabelle und nur die der rechten Tabelle, die dazu passen",
           u"2: Todos los registros de la tabla izquierda y solo los de la tabla derecha que coinciden"}},
    {154, {u"3: All records from right table and only those records from the left Table that match.",
           u"3 : Tous les enregistrements de la table de droite et seulement ceux de la table de gauche qui "
           u"correspondent.",
           u"3: Alle Datensätze der rechten Tabelle und nur die der linken Tabelle, die dazu passen.",
           u"3: Todos los registros de la tabla derecha y solo los de la tabla izquierda que coinciden."}},

    // Export choice dialog.
    {155, {u" Excel Export", u" Export Excel", u" Excel-Export", u" Exportar a Excel"}},
    {156, {u"Pivot Table", u"Tableau croisé dynamique", u"Pivot-Tabelle", u"Tabla dinámica"}},
    {157, {u"Data", u"Données", u"Daten", u"Datos"}},
    {158, {u"Export as", u"Exporter comme", u"Exportieren als", u"Exportar como"}},

    // Questions about fields and query files.
    {159, {u"Do you want to include", u"Voulez-vous inclure", u"Möchten Sie", u"¿Desea incluir"}},
    {160, {u" as an Output Field ?", u" comme champ affiché ?", u" als Ausgabefeld aufnehmen?",
           u" como campo de salida?"}},
    {161, {u"Please confirm that you wish to delete Query:",
           u"Veuillez confirmer la suppression de la requête :",
           u"Bitte bestätigen Sie das Löschen der Abfrage:",
           u"Confirme que desea eliminar la consulta:"}},

    // Buttons.
    {162, {u"Save Query", u"Enregistrer la requête", u"Abfrage speichern", u"Guardar consulta"}},
    {163, {u"Delete Query", u"Supprimer la requête", u"Abfrage löschen", u"Eliminar consulta"}},
    {164, {u"Reset SQL", u"Réinitialiser SQL", u"SQL zurücksetzen", u"Restablecer SQL"}},
    {165, {u"Show SQL", u"Afficher SQL", u"SQL zeigen", u"Mostrar SQL"}},

    // Tables changed by the host.
    {166, {u"Table : '", u"Table : '", u"Tabelle : '", u"Tabla : '"}},
    {167, {u"' unknown to database", u"' inconnue de la base de données", u"' ist der Datenbank unbekannt",
           u"' desconocida en la base de datos"}},
    {168, {u"No database connection has been established.",
           u"Aucune connexion à la base de données n'a été établie.",
           u"Es besteht keine Verbindung zu einer Datenbank.",
           u"No se ha establecido ninguna conexión con la base de datos."}},
    {169, {u"You must make a connection before you can alter the Table Collection.",
           u"Une connexion est nécessaire avant de modifier la collection des tables.",
           u"Vor einer Änderung der Tabellensammlung muss eine Verbindung bestehen.",
           u"Debe establecer una conexión antes de modificar la colección de tablas."}},
    {170, {u"Changes to Table Collection were unsuccessful.",
           u"La collection des tables n'a pas été modifiée.",
           u"Die Tabellensammlung wurde nicht geändert.",
           u"No se ha modificado la colección de tablas."}},
    {171, {u"' already exists in Collection.", u"' existe déjà dans la collection.",
           u"' ist bereits in der Sammlung.", u"' ya existe en la colección."}},
    {172, {u"Unable to add Table.", u"Impossible d'ajouter la table.",
           u"Die Tabelle kann nicht hinzugefügt werden.", u"No se puede agregar la tabla."}},
    {173, {u"' does not exist in Collection.", u"' n'existe pas dans la collection.",
           u"' ist nicht in der Sammlung.", u"' no existe en la colección."}},
    {174, {u"Unable to remove Table.", u"Impossible de retirer la table.",
           u"Die Tabelle kann nicht entfernt werden.", u"No se puede quitar la tabla."}},

    // Fields.
    {175, {u"Alias already exists.", u"L'alias existe déjà.", u"Der Alias ist schon vergeben.",
           u"El alias ya existe."}},
    {176, {u"All Alias must be unique.", u"Chaque alias doit être unique.", u"Jeder Alias muss eindeutig sein.",
           u"Cada alias debe ser único."}},
    {177, {u"Are you sure you want to Delete selected Field ?",
           u"Voulez-vous vraiment supprimer le champ choisi ?",
           u"Möchten Sie das gewählte Feld wirklich löschen?",
           u"¿Seguro que desea eliminar el campo seleccionado?"}},
    {178, {u"Delete Field", u"Supprimer le champ", u"Feld löschen", u"Eliminar campo"}},

    // Connecting and showing.
    {179, {u"Connection method has failed.", u"La connexion a échoué.", u"Die Verbindung ist fehlgeschlagen.",
           u"La conexión ha fallado."}},
    {180, {u"1 of 4 errors has been made.", u"Une erreur sur 4 possibles a été commise.",
           u"Einer von 4 Fehlern liegt vor.", u"Se ha cometido uno de 4 errores."}},
    {181, {u"1. Invalid or unsupported connection attempted.",
           u"1. La connexion tentée n'est pas valable ou pas prise en charge.",
           u"1. Die versuchte Verbindung ist ungültig oder wird nicht unterstützt.",
           u"1. La conexión intentada no es válida o no se admite."}},
    {182, {u"2. Connection has not been set.", u"2. Aucune connexion n'a été définie.",
           u"2. Es wurde keine Verbindung angegeben.", u"2. No se ha definido ninguna conexión."}},
    {183, {u"3. Selected Tables are invalid.", u"3. Les tables choisies ne sont pas valables.",
           u"3. Die gewählten Tabellen sind ungültig.", u"3. Las tablas seleccionadas no son válidas."}},
    {184, {u"4. No Tables have been selected.", u"4. Aucune table n'a été choisie.",
           u"4. Es wurden keine Tabellen gewählt.", u"4. No se ha seleccionado ninguna tabla."}},
    {185, {u"Any Errors must be resolved before proceeding.",
           u"Toute erreur doit être corrigée avant de continuer.",
           u"Vor dem Fortfahren muss jeder Fehler behoben sein.",
           u"Debe corregirse todo error antes de continuar."}},

    // Export.
    {186, {u"Export error: This function requires Excel 2000 or above,",
           u"Erreur d'export : cette fonction requiert Excel 2000 ou une version plus récente,",
           u"Exportfehler: Diese Funktion benötigt Excel 2000 oder neuer,",
           u"Error de exportación: esta función requiere Excel 2000 o posterior,"}},
    {187, {u"Unable to complete this operation.", u"Impossible d'achever cette opération.",
           u"Der Vorgang kann nicht abgeschlossen werden.", u"No se puede completar la operación."}},
    {188, {u"If you are running Excel 97 a solution exists by calling method 'ZPBExcel97ConnectionDetails'.",
           u"Avec Excel 97, la méthode 'ZPBExcel97ConnectionDetails' offre une solution.",
           u"Für Excel 97 gibt es eine Lösung über die Methode 'ZPBExcel97ConnectionDetails'.",
           u"Con Excel 97 existe una solución: llamar al método 'ZPBExcel97ConnectionDetails'."}},
    {189, {u"Please contact the person responsible for this application and quote this error.",
           u"Veuillez signaler cette erreur au responsable de cette application.",
           u"Bitte melden Sie diesen Fehler der Person, die für diese Anwendung zuständig ist.",
           u"Comunique este error a la persona responsable de esta aplicación."}},
    {190, {u"Export Error:", u"Erreur d'export :", u"Exportfehler:", u"Error de exportación:"}},
    {191, {u"Unable to complete Excel export.", u"Impossible d'achever l'export vers Excel.",
           u"Der Excel-Export kann nicht abgeschlossen werden.", u"No se puede completar la exportación a Excel."}},

    // Table tab.
    {193, {u"Only 1 Table can be selected at a time.", u"Une seule table peut être choisie à la fois.",
           u"Es kann nur eine Tabelle gewählt werden.", u"Solo puede seleccionarse una tabla a la vez."}},
    {194, {u"Please de-select selected Table first.", u"Veuillez d'abord retirer la table choisie.",
           u"Bitte nehmen Sie zuerst die gewählte Tabelle zurück.", u"Quite primero la tabla seleccionada."}},

    // Opening a query.
    {199, {u"Query ", u"La requête ", u"Die Abfrage ", u"La consulta "}},
    {200, {u"can not be found at the specified location.", u"est introuvable à l'emplacement indiqué.",
           u"ist am angegebenen Ort nicht zu finden.", u"no se encuentra en la ubicación indicada."}},
    {201, {u"The file may be missing or corrupt.", u"Le fichier est peut-être absent ou endommagé.",
           u"Die Datei fehlt oder ist beschädigt.", u"Es posible que el archivo falte o esté dañado."}},
    {202, {u"Error Opening Query :", u"Erreur d'ouverture de la requête :", u"Fehler beim Öffnen der Abfrage:",
           u"Error al abrir la consulta:"}},
    {203, {u"Are you sure you want to reset the SQL ?", u"Voulez-vous vraiment réinitialiser le SQL ?",
           u"Möchten Sie das SQL wirklich zurücksetzen?", u"¿Seguro que desea restablecer el SQL?"}},

    // Running and closing.
    {205, {u"No SELECT fields specified.", u"Aucun champ SELECT n'est indiqué.",
           u"Es sind keine SELECT-Felder angegeben.", u"No se han indicado campos para SELECT."}},
    {206, {u"Unable to execute the SQL.", u"Impossible d'exécuter le SQL.", u"Das SQL kann nicht ausgeführt werden.",
           u"No se puede ejecutar el SQL."}},
    {208, {u"Unable to make a connection to the database.", u"Impossible de se connecter à la base de données.",
           u"Es kann keine Verbindung zur Datenbank hergestellt werden.",
           u"No se puede establecer una conexión con la base de datos."}},
    {209, {u"Connection string:", u"Chaîne de connexion :", u"Verbindungszeichenfolge:", u"Cadena de conexión:"}},
    {211, {u"You have chosen to close", u"Vous avez choisi de fermer", u"Sie haben gewählt, zu schließen:",
           u"Ha elegido cerrar"}},
    {212, {u"Do you want to Save your changes before closing ?",
           u"Voulez-vous enregistrer vos modifications avant de fermer ?",
           u"Möchten Sie Ihre Änderungen vor dem Schließen speichern?",
           u"¿Desea guardar los cambios antes de cerrar?"}},

    // Texts that nothing shows at present.
    {214, {u"Multi-field joins are not supported.", u"Les jointures sur plusieurs champs ne sont pas prises en charge.",
           u"Verknüpfungen über mehrere Felder werden nicht unterstützt.",
           u"No se admiten combinaciones de varios campos."}},
    {215, {u"You can not join a table to itself.", u"Une table ne peut pas être jointe à elle-même.",
           u"Eine Tabelle kann nicht mit sich selbst verknüpft werden.",
           u"No se puede combinar una tabla consigo misma."}},
    {223, {u"Table does not exist in the database.", u"La table n'existe pas dans la base de données.",
           u"Die Tabelle ist in der Datenbank nicht vorhanden.", u"La tabla no existe en la base de datos."}},
    {224, {u"Table Selection Error", u"Erreur de choix de table", u"Fehler bei der Tabellenwahl",
           u"Error de selección de tabla"}},

    // Buttons and frames.
    {225, {u"Close", u"Fermer", u"Schließen", u"Cerrar"}},
    {226, {u"Create View", u"Créer une vue", u"Sicht anlegen", u"Crear vista"}},
    {227, {u"Ascending", u"Croissant", u"Aufsteigend", u"Ascendente"}},
    {228, {u"Descending", u"Décroissant", u"Absteigend", u"Descendente"}},
    {229, {u"Excel", u"Excel", u"Excel", u"Excel"}},
    {230, {u"Calculated Field", u"Champ calculé", u"Berechnetes Feld", u"Campo calculado"}},
    {231, {u"Field(s)", u"Champ(s)", u"Feld(er)", u"Campo(s)"}},
    {232, {u"Output", u"Afficher", u"Ausgabe", u"Salida"}},
    {233, {u"Add", u"Ajouter", u"Hinzufügen", u"Agregar"}},

    // Tool tips and what is set by code.
    {238, {u"Edit Where / Having values", u"Modifier les valeurs Where / Having", u"Where- / Having-Werte bearbeiten",
           u"Editar valores Where / Having"}},
    {239, {u"Edit Group Fields", u"Modifier les champs de groupe", u"Gruppierfelder bearbeiten",
           u"Editar campos de grupo"}},
    {240, {u"Edit Order Fields", u"Modifier les champs de tri", u"Sortierfelder bearbeiten",
           u"Editar campos de orden"}},
    {241, {u"Edit Calculated Fields", u"Modifier les champs calculés", u"Berechnete Felder bearbeiten",
           u"Editar campos calculados"}},
    {242, {u"Search for Field Values", u"Chercher les valeurs du champ", u"Feldwerte suchen",
           u"Buscar valores del campo"}},
    {243, {u"Add Criteria", u"Ajouter un critère", u"Kriterium hinzufügen", u"Agregar criterio"}},
    {244, {u"Remove Field", u"Retirer le champ", u"Feld entfernen", u"Quitar campo"}},
    {245, {u"Create a Calculated Field", u"Créer un champ calculé", u"Berechnetes Feld anlegen",
           u"Crear un campo calculado"}},
    {246, {u"Where / Having criteria: cells of a row are joined by AND, rows by OR",
           u"Critères Where / Having : les cellules d'une ligne sont liées par AND, les lignes par OR",
           u"Where- / Having-Kriterien: Zellen einer Zeile sind mit AND verbunden, Zeilen mit OR",
           u"Criterios Where / Having: las celdas de una fila se unen con AND, las filas con OR"}},
};

}  // namespace

std::span<const StringRow> StringRows() { return rows; }

}  // namespace zephrin::resources
