<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>ToolbarStrings</name>
    <message>
        <source>Separator</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Flexible Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Icon and Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Icon Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Customize Toolbar…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Customize Toolbar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag items into the toolbar list, or select them and press Add. Drag items out of it, or press Delete, to remove them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Available items:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Toolbar items:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add →</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>← Remove</source>
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
        <source>&amp;Show:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Already in the toolbar</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WQGeneral</name>
    <message>
        <source>A character that a whole-number field does not accept</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A character that a decimal or amount field or column does not accept</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A character that a date column does not accept</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file is not an encrypted document.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document is encrypted in a way that this version cannot read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The encrypted document is damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The password is wrong, or the encrypted document is damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The encrypted document is larger than this reader accepts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You cannot leave the date field blank.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Too many numbers for a date.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid month entry.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid day entry.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%@&quot; is not valid here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%@&quot; can&apos;t appear more than twice here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%@&quot; can&apos;t appear more than once here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Don&apos;t show again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warnings you have silenced with &quot;Don&apos;t show again&quot;:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show all warnings again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None: every warning is shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The %@ field is blank.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This field can not be left empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The %@ field is negative.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This field can not be negative.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The %@ field is negative or zero.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This field can not be negative or zero.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The %@ text field accepts any of the digits &quot;0&quot; through &quot;9&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The %@ column accepts any of the digits &quot;0&quot; through &quot;9&quot; and the negative sign &quot;-&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The %@ column accepts any of the digits &quot;0&quot; through &quot;9&quot;, the negative sign &quot;-&quot; and the decimal separator &quot;%@&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The %@ text field accepts any of the digits &quot;0&quot; through &quot;9&quot; and the negative sign &quot;-&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The %@ text field accepts any of the digits &quot;0&quot; through &quot;9&quot;, the negative sign &quot;-&quot; and the decimal separator &quot;%@&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The %@ text field accepts any of the digits &quot;0&quot; through &quot;9&quot; and the separator &quot;%@&quot;.  You can also use the &quot;+&quot; and &quot;=&quot; keys to increment the day; &quot;-&quot; key to decrement the day; &quot;option +&quot; and &quot;option =&quot; to increment the month; &quot;option -&quot; to decrement the month; &quot;t&quot; sets the date to today.

The date must be entered as a day, month, and year.  The order of the three values depends on your Short Date settings in the International pane of System Preferences.</source>
        <translation>The %@ text field accepts any of the digits &quot;0&quot; through &quot;9&quot; and the separator &quot;%@&quot;.  You can also use the &quot;+&quot; and &quot;=&quot; keys to increment the day; &quot;-&quot; key to decrement the day; &quot;Alt +&quot; and &quot;Alt =&quot; to increment the month; &quot;Alt -&quot; to decrement the month; &quot;t&quot; sets the date to today.

The date must be entered as a day, month, and year.  The order of the three values depends on the short date format in your desktop&apos;s regional settings.</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number %@</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Operator %@</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Next number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total %@</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type a number and an operator for the next; = or Return writes the total into the field, Escape leaves the field as it was</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid year entry.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The date must be between %@ and %@.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The date must be on or after %@.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The date must be on or before %@.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a date</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
