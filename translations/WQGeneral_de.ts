<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ToolbarStrings</name>
    <message>
        <source>Separator</source>
        <translation>Trennlinie</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leerraum</translation>
    </message>
    <message>
        <source>Flexible Space</source>
        <translation>Flexibler Leerraum</translation>
    </message>
    <message>
        <source>Icon and Text</source>
        <translation>Symbol und Text</translation>
    </message>
    <message>
        <source>Icon Only</source>
        <translation>Nur Symbol</translation>
    </message>
    <message>
        <source>Text Only</source>
        <translation>Nur Text</translation>
    </message>
    <message>
        <source>Customize Toolbar…</source>
        <translation>Symbolleiste anpassen …</translation>
    </message>
    <message>
        <source>Customize Toolbar</source>
        <translation>Symbolleiste anpassen</translation>
    </message>
    <message>
        <source>Drag items into the toolbar list, or select them and press Add. Drag items out of it, or press Delete, to remove them.</source>
        <translation>Ziehen Sie Objekte in die Liste der Symbolleiste oder wählen Sie sie aus und klicken Sie auf „Hinzufügen“. Zum Entfernen ziehen Sie sie aus der Liste heraus oder drücken die Entf-Taste.</translation>
    </message>
    <message>
        <source>&amp;Available items:</source>
        <translation>&amp;Verfügbare Objekte:</translation>
    </message>
    <message>
        <source>&amp;Toolbar items:</source>
        <translation>In der &amp;Symbolleiste:</translation>
    </message>
    <message>
        <source>Add →</source>
        <translation>Hinzufügen →</translation>
    </message>
    <message>
        <source>← Remove</source>
        <translation>← Entfernen</translation>
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
        <source>&amp;Show:</source>
        <translation>&amp;Anzeigen:</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Standard wiederherstellen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Already in the toolbar</source>
        <translation>Bereits in der Symbolleiste</translation>
    </message>
</context>
<context>
    <name>WQGeneral</name>
    <message>
        <source>The file is not an encrypted document.</source>
        <translation>Die Datei ist kein verschlüsseltes Dokument.</translation>
    </message>
    <message>
        <source>The document is encrypted in a way that this version cannot read.</source>
        <translation>Das Dokument ist auf eine Weise verschlüsselt, die diese Version nicht lesen kann.</translation>
    </message>
    <message>
        <source>The encrypted document is damaged.</source>
        <translation>Das verschlüsselte Dokument ist beschädigt.</translation>
    </message>
    <message>
        <source>The password is wrong, or the encrypted document is damaged.</source>
        <translation>Das Kennwort ist falsch, oder das verschlüsselte Dokument ist beschädigt.</translation>
    </message>
    <message>
        <source>The encrypted document is larger than this reader accepts.</source>
        <translation>Das verschlüsselte Dokument ist größer, als hier gelesen werden kann.</translation>
    </message>
    <message>
        <source>You cannot leave the date field blank.</source>
        <translation>Das Datumsfeld darf nicht leer bleiben.</translation>
    </message>
    <message>
        <source>Too many numbers for a date.</source>
        <translation>Zu viele Zahlen für ein Datum.</translation>
    </message>
    <message>
        <source>Invalid month entry.</source>
        <translation>Ungültige Monatsangabe.</translation>
    </message>
    <message>
        <source>Invalid day entry.</source>
        <translation>Ungültige Tagesangabe.</translation>
    </message>
    <message>
        <source>&quot;%@&quot; is not valid here</source>
        <translation>„%@“ ist hier nicht zulässig</translation>
    </message>
    <message>
        <source>&quot;%@&quot; can&apos;t appear more than twice here</source>
        <translation>„%@“ darf hier höchstens zweimal vorkommen</translation>
    </message>
    <message>
        <source>&quot;%@&quot; can&apos;t appear more than once here</source>
        <translation>„%@“ darf hier nur einmal vorkommen</translation>
    </message>
    <message>
        <source>Invalid number</source>
        <translation>Ungültige Zahl</translation>
    </message>
    <message>
        <source>Don&apos;t show again</source>
        <translation>Nicht mehr anzeigen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Warnings you have silenced with &quot;Don&apos;t show again&quot;:</source>
        <translation>Warnungen, die Sie mit „Nicht mehr anzeigen“ ausgeblendet haben:</translation>
    </message>
    <message>
        <source>Show all warnings again</source>
        <translation>Alle Warnungen wieder anzeigen</translation>
    </message>
    <message>
        <source>Show again</source>
        <translation>Wieder anzeigen</translation>
    </message>
    <message>
        <source>None: every warning is shown.</source>
        <translation>Keine: Alle Warnungen werden angezeigt.</translation>
    </message>
    <message>
        <source>A character that a whole-number field does not accept</source>
        <translation>Ein Zeichen, das ein Feld für ganze Zahlen nicht annimmt</translation>
    </message>
    <message>
        <source>A character that a decimal or amount field or column does not accept</source>
        <translation>Ein Zeichen, das ein Dezimal- oder Betragsfeld oder eine solche Spalte nicht annimmt</translation>
    </message>
    <message>
        <source>A character that a date column does not accept</source>
        <translation>Ein Zeichen, das eine Datumsspalte nicht annimmt</translation>
    </message>
    <message>
        <source>The %@ field is blank.</source>
        <translation>Das Feld „%@“ ist leer.</translation>
    </message>
    <message>
        <source>This field can not be left empty.</source>
        <translation>Dieses Feld darf nicht leer bleiben.</translation>
    </message>
    <message>
        <source>The %@ field is negative.</source>
        <translation>Das Feld „%@“ ist negativ.</translation>
    </message>
    <message>
        <source>This field can not be negative.</source>
        <translation>Dieses Feld darf nicht negativ sein.</translation>
    </message>
    <message>
        <source>The %@ field is negative or zero.</source>
        <translation>Das Feld „%@“ ist negativ oder null.</translation>
    </message>
    <message>
        <source>This field can not be negative or zero.</source>
        <translation>Dieses Feld darf weder negativ noch null sein.</translation>
    </message>
    <message>
        <source>The %@ text field accepts any of the digits &quot;0&quot; through &quot;9&quot;.</source>
        <translation>Das Textfeld „%@“ nimmt die Ziffern „0“ bis „9“ an.</translation>
    </message>
    <message>
        <source>The %@ column accepts any of the digits &quot;0&quot; through &quot;9&quot; and the negative sign &quot;-&quot;.</source>
        <translation>Die Spalte „%@“ nimmt die Ziffern „0“ bis „9“ und das Minuszeichen „-“ an.</translation>
    </message>
    <message>
        <source>The %@ column accepts any of the digits &quot;0&quot; through &quot;9&quot;, the negative sign &quot;-&quot; and the decimal separator &quot;%@&quot;.</source>
        <translation>Die Spalte „%@“ nimmt die Ziffern „0“ bis „9“, das Minuszeichen „-“ und das Dezimaltrennzeichen „%@“ an.</translation>
    </message>
    <message>
        <source>The %@ text field accepts any of the digits &quot;0&quot; through &quot;9&quot; and the negative sign &quot;-&quot;.</source>
        <translation>Das Textfeld „%@“ nimmt die Ziffern „0“ bis „9“ und das Minuszeichen „-“ an.</translation>
    </message>
    <message>
        <source>The %@ text field accepts any of the digits &quot;0&quot; through &quot;9&quot;, the negative sign &quot;-&quot; and the decimal separator &quot;%@&quot;.</source>
        <translation>Das Textfeld „%@“ nimmt die Ziffern „0“ bis „9“, das Minuszeichen „-“ und das Dezimaltrennzeichen „%@“ an.</translation>
    </message>
    <message>
        <source>The %@ text field accepts any of the digits &quot;0&quot; through &quot;9&quot; and the separator &quot;%@&quot;.  You can also use the &quot;+&quot; and &quot;=&quot; keys to increment the day; &quot;-&quot; key to decrement the day; &quot;option +&quot; and &quot;option =&quot; to increment the month; &quot;option -&quot; to decrement the month; &quot;t&quot; sets the date to today.

The date must be entered as a day, month, and year.  The order of the three values depends on your Short Date settings in the International pane of System Preferences.</source>
        <translation>Das Textfeld „%@“ nimmt die Ziffern „0“ bis „9“ und das Trennzeichen „%@“ an.  Mit den Tasten „+“ und „=“ geht das Datum einen Tag vor, mit „-“ einen Tag zurück; „Alt +“ und „Alt =“ gehen einen Monat vor, „Alt -“ einen Monat zurück; „t“ setzt das heutige Datum ein.

Das Datum besteht aus Tag, Monat und Jahr.  In welcher Reihenfolge sie eingegeben werden, richtet sich nach dem kurzen Datumsformat in den Landeseinstellungen des Systems.</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>Rechner</translation>
    </message>
    <message>
        <source>Number %@</source>
        <translation>Zahl %@</translation>
    </message>
    <message>
        <source>Operator %@</source>
        <translation>Rechenzeichen %@</translation>
    </message>
    <message>
        <source>Next number</source>
        <translation>Nächste Zahl</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Summe</translation>
    </message>
    <message>
        <source>Total %@</source>
        <translation>Summe %@</translation>
    </message>
    <message>
        <source>Invalid year entry.</source>
        <translation>Ungültige Jahresangabe.</translation>
    </message>
    <message>
        <source>The date must be between %@ and %@.</source>
        <translation>Das Datum muss zwischen %@ und %@ liegen.</translation>
    </message>
    <message>
        <source>The date must be on or after %@.</source>
        <translation>Das Datum darf nicht vor dem %@ liegen.</translation>
    </message>
    <message>
        <source>The date must be on or before %@.</source>
        <translation>Das Datum darf nicht nach dem %@ liegen.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Type a number and an operator for the next; = or Return writes the total into the field, Escape leaves the field as it was</source>
        <translation>Eine Zahl und ein Rechenzeichen für die nächste eingeben; = oder die Eingabetaste schreibt die Summe ins Feld, Escape lässt das Feld, wie es war</translation>
    </message>
    <message>
        <source>Choose a date</source>
        <translation>Datum auswählen</translation>
    </message>
</context>
</TS>
