<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Showcase</name>
    <message>
        <source>Accounts</source>
        <translation>Konten</translation>
    </message>
    <message>
        <source>Expand All</source>
        <translation>Alle aufklappen</translation>
    </message>
    <message>
        <source>Collapse All</source>
        <translation>Alle zuklappen</translation>
    </message>
    <message>
        <source>Show every account</source>
        <translation>Alle Konten zeigen</translation>
    </message>
    <message>
        <source>Show the top-level accounts only</source>
        <translation>Nur die obersten Konten zeigen</translation>
    </message>
    <message>
        <source>The document&apos;s accounts; Right and Left open and close one</source>
        <translation>Die Konten des Dokuments; Rechts und Links klappen eines auf und zu</translation>
    </message>
    <message>
        <source>Select an account to see where it belongs.</source>
        <translation>Ein Konto wählen, um zu sehen, wozu es gehört.</translation>
    </message>
    <message>
        <source>%1 is inside a collapsed account.</source>
        <translation>%1 liegt in einem zugeklappten Konto.</translation>
    </message>
    <message>
        <source>%1 is a top-level account (row %2).</source>
        <translation>%1 ist ein oberstes Konto (Zeile %2).</translation>
    </message>
    <message>
        <source>%1 (row %2) belongs to %3 (row %4).</source>
        <translation>%1 (Zeile %2) gehört zu %3 (Zeile %4).</translation>
    </message>
    <message>
        <source>+ or = next day, - previous day, Alt for months, t today</source>
        <translation>+ oder = nächster Tag, - voriger Tag, mit Alt Monate, t heute</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Cleared on</source>
        <translation>Gebucht am</translation>
    </message>
    <message>
        <source>When the bank cleared the transaction; the arrows step the part under the cursor</source>
        <translation>Wann die Bank die Buchung ausgeführt hat; die Pfeiltasten ändern den Teil unter dem Cursor</translation>
    </message>
    <message>
        <source>+ - * / open the calculator and = finishes it (without the calculator &quot;-&quot; flips the sign); in ATM typing digits enter from the right</source>
        <translation>+ - * / öffnen den Rechner, = schließt ihn ab (ohne Rechner kehrt „-“ das Vorzeichen um); bei Eingabe wie am Geldautomaten kommen die Ziffern von rechts</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>Betrag</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Ein</translation>
    </message>
    <message>
        <source>+ - * / in the amount open the calculator; off, &quot;-&quot; flips the amount&apos;s sign</source>
        <translation>+ - * / im Betrag öffnen den Rechner; ausgeschaltet kehrt „-“ das Vorzeichen des Betrags um</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>Rechner</translation>
    </message>
    <message>
        <source>ATM typing</source>
        <translation>Wie am Geldautomaten</translation>
    </message>
    <message>
        <source>Digits enter the amount from the right, as at a cash machine; the decimal separator is never typed</source>
        <translation>Die Ziffern kommen von rechts in den Betrag, wie am Geldautomaten; das Dezimaltrennzeichen wird nie getippt</translation>
    </message>
    <message>
        <source>Typing</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>The currency amounts are typed and shown in</source>
        <translation>Die Währung, in der Beträge eingegeben und gezeigt werden</translation>
    </message>
    <message>
        <source>System settings</source>
        <translation>Systemeinstellungen</translation>
    </message>
    <message>
        <source>Swiss francs (CHF 1&apos;234.50)</source>
        <translation>Schweizer Franken (CHF 1&apos;234.50)</translation>
    </message>
    <message>
        <source>Currency</source>
        <translation>Währung</translation>
    </message>
    <message>
        <source>How many payments the transaction is split into (a whole number)</source>
        <translation>In wie viele Zahlungen die Buchung geteilt wird (eine ganze Zahl)</translation>
    </message>
    <message>
        <source>Payments</source>
        <translation>Zahlungen</translation>
    </message>
    <message>
        <source>The interest rate, in percent (a decimal number)</source>
        <translation>Der Zinssatz in Prozent (eine Dezimalzahl)</translation>
    </message>
    <message>
        <source>Rate %</source>
        <translation>Zins %</translation>
    </message>
    <message>
        <source>WQGeneral showcase: Checking</source>
        <translation>WQGeneral-Schaufenster: Girokonto</translation>
    </message>
    <message>
        <source>Register</source>
        <translation>Kontobuch</translation>
    </message>
    <message>
        <source>The transactions in date order, with the running balance</source>
        <translation>Die Buchungen nach Datum, mit dem laufenden Saldo</translation>
    </message>
    <message>
        <source>Payee</source>
        <translation>Empfänger</translation>
    </message>
    <message>
        <source>Balance</source>
        <translation>Saldo</translation>
    </message>
    <message>
        <source>Who was paid, or who paid</source>
        <translation>Wer bezahlt wurde oder wer bezahlt hat</translation>
    </message>
    <message>
        <source>&amp;Enter</source>
        <translation>Er&amp;fassen</translation>
    </message>
    <message>
        <source>Records the transaction of the entry row</source>
        <translation>Erfasst die Buchung der Eingabezeile</translation>
    </message>
    <message>
        <source>%1 of the transaction; Return records it</source>
        <translation>%1 der Buchung; die Eingabetaste erfasst sie</translation>
    </message>
    <message>
        <source>date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>payee</source>
        <translation>Empfänger</translation>
    </message>
    <message>
        <source>amount</source>
        <translation>Betrag</translation>
    </message>
    <message>
        <source>To record a transaction, fill in the %1.</source>
        <translation>Um die Buchung zu erfassen, bitte %1 ausfüllen.</translation>
    </message>
    <message>
        <source> and </source>
        <translation> und </translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>Search payees</source>
        <translation>Empfänger suchen</translation>
    </message>
    <message>
        <source>Show only the transactions of matching payees</source>
        <translation>Nur die Buchungen passender Empfänger zeigen</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>Show every transaction again</source>
        <translation>Wieder alle Buchungen zeigen</translation>
    </message>
    <message>
        <source>The currency amounts are typed in</source>
        <translation>Die Währung, in der Beträge eingegeben werden</translation>
    </message>
    <message>
        <source>System currency</source>
        <translation>Systemwährung</translation>
    </message>
    <message>
        <source>Swiss francs</source>
        <translation>Schweizer Franken</translation>
    </message>
    <message>
        <source>Warnings</source>
        <translation>Warnungen</translation>
    </message>
    <message>
        <source>Drag the title to move the panel</source>
        <translation>Den Titel ziehen, um die Tafel zu verschieben</translation>
    </message>
    <message>
        <source>&lt;p&gt;Reconcile against the &lt;a href=&quot;https://example.com/statements/2026-03&quot;&gt;March statement&lt;/a&gt; before the 20th.&lt;/p&gt;&lt;p&gt;The &lt;a href=&quot;https://example.com/rates&quot;&gt;savings rates&lt;/a&gt; changed on the 1st.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Vor dem 20. mit dem &lt;a href=&quot;https://example.com/statements/2026-03&quot;&gt;Märzauszug&lt;/a&gt; abgleichen.&lt;/p&gt;&lt;p&gt;Die &lt;a href=&quot;https://example.com/rates&quot;&gt;Sparzinsen&lt;/a&gt; haben sich am 1. geändert.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;&lt;b&gt;WQGeneral showcase&lt;/b&gt; 0.1: a register window built only from the framework&apos;s public API.&lt;/p&gt;&lt;p&gt;Read the &lt;a href=&quot;https://example.com/wqgeneral/readme&quot;&gt;guide&lt;/a&gt; or &lt;a href=&quot;https://example.com/wqgeneral/issues&quot;&gt;report a problem&lt;/a&gt;.&lt;/p&gt;</source>
        <translation>&lt;p&gt;&lt;b&gt;WQGeneral-Schaufenster&lt;/b&gt; 0.1: ein Kontobuch, nur aus der öffentlichen Schnittstelle des Frameworks gebaut.&lt;/p&gt;&lt;p&gt;Die &lt;a href=&quot;https://example.com/wqgeneral/readme&quot;&gt;Anleitung&lt;/a&gt; lesen oder &lt;a href=&quot;https://example.com/wqgeneral/issues&quot;&gt;ein Problem melden&lt;/a&gt;.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Budget</source>
        <translation>Budget</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Notiz</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Empties the entry row</source>
        <translation>Leert die Eingabezeile</translation>
    </message>
    <message>
        <source>March</source>
        <translation>März</translation>
    </message>
    <message>
        <source>every month</source>
        <translation>jeden Monat</translation>
    </message>
    <message>
        <source>every quarter</source>
        <translation>jedes Quartal</translation>
    </message>
    <message>
        <source>once</source>
        <translation>einmal</translation>
    </message>
    <message>
        <source>How often the budget repeats; shown once a budget is typed</source>
        <translation>Wie oft sich das Budget wiederholt; erscheint, sobald ein Budget eingegeben ist</translation>
    </message>
    <message>
        <source>Groceries</source>
        <translation>Lebensmittel</translation>
    </message>
    <message>
        <source>Utilities</source>
        <translation>Nebenkosten</translation>
    </message>
    <message>
        <source>Repeats</source>
        <translation>Wiederholung</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Summe</translation>
    </message>
    <message>
        <source>What March&apos;s groceries may cost</source>
        <translation>Was die Lebensmittel im März kosten dürfen</translation>
    </message>
    <message>
        <source>What March&apos;s power, water and internet may cost</source>
        <translation>Was Strom, Wasser und Internet im März kosten dürfen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Mark cleared</source>
        <translation>Als gebucht markieren</translation>
    </message>
    <message>
        <source>&amp;Transactions</source>
        <translation>&amp;Buchungen</translation>
    </message>
    <message>
        <source>&amp;New Transaction</source>
        <translation>&amp;Neue Buchung</translation>
    </message>
    <message>
        <source>&amp;Delete Transaction</source>
        <translation>Buchung &amp;löschen</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>Fenster &amp;schließen</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Calculator in Amounts</source>
        <translation>&amp;Rechner in Beträgen</translation>
    </message>
    <message>
        <source>&amp;Accounts</source>
        <translation>&amp;Konten</translation>
    </message>
    <message>
        <source>&amp;Expand All</source>
        <translation>Alle &amp;aufklappen</translation>
    </message>
    <message>
        <source>&amp;Collapse All</source>
        <translation>Alle &amp;zuklappen</translation>
    </message>
    <message>
        <source>Customize &amp;Toolbar…</source>
        <translation>&amp;Symbolleiste anpassen …</translation>
    </message>
    <message>
        <source>&amp;Warnings…</source>
        <translation>&amp;Warnungen …</translation>
    </message>
    <message>
        <source>&amp;Show All Warnings Again</source>
        <translation>Alle Warnungen wieder &amp;zeigen</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Symbolleiste</translation>
    </message>
    <message>
        <source>More toolbar items</source>
        <translation>Weitere Symbole</translation>
    </message>
    <message>
        <source>The toolbar items the window is too narrow for</source>
        <translation>Die Symbole, für die das Fenster zu schmal ist</translation>
    </message>
    <message>
        <source>Cleared</source>
        <translation>Gebucht</translation>
    </message>
    <message>
        <source>Not cleared</source>
        <translation>Nicht gebucht</translation>
    </message>
    <message>
        <source>A transaction needs a date.</source>
        <translation>Eine Buchung braucht ein Datum.</translation>
    </message>
    <message>
        <source>Edit Date</source>
        <translation>Datum ändern</translation>
    </message>
    <message>
        <source>A transaction needs a payee.</source>
        <translation>Eine Buchung braucht einen Empfänger.</translation>
    </message>
    <message>
        <source>Edit Payee</source>
        <translation>Empfänger ändern</translation>
    </message>
    <message>
        <source>A transaction needs an amount.</source>
        <translation>Eine Buchung braucht einen Betrag.</translation>
    </message>
    <message>
        <source>Edit Amount</source>
        <translation>Betrag ändern</translation>
    </message>
    <message>
        <source>Mark Cleared</source>
        <translation>Als gebucht markieren</translation>
    </message>
    <message>
        <source>Mark Uncleared</source>
        <translation>Als nicht gebucht markieren</translation>
    </message>
    <message>
        <source>Record Transaction</source>
        <translation>Buchung erfassen</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>Be&amp;arbeiten</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig:</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen:</translation>
    </message>
</context>
<context>
    <name>ToolbarStrings</name>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>New Transaction</source>
        <translation>Neue Buchung</translation>
    </message>
    <message>
        <source>Record the entry row as a new transaction</source>
        <translation>Die Eingabezeile als neue Buchung erfassen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Delete Transaction</source>
        <translation>Buchung löschen</translation>
    </message>
    <message>
        <source>Delete the selected transactions</source>
        <translation>Die gewählten Buchungen löschen</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>Rechner</translation>
    </message>
    <message>
        <source>Calculator On/Off</source>
        <translation>Rechner ein/aus</translation>
    </message>
    <message>
        <source>Open the calculator when an operator is typed in an amount</source>
        <translation>Den Rechner öffnen, wenn in einem Betrag ein Rechenzeichen getippt wird</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suche</translation>
    </message>
    <message>
        <source>Search Field</source>
        <translation>Suchfeld</translation>
    </message>
    <message>
        <source>Show only the transactions of matching payees</source>
        <translation>Nur die Buchungen passender Empfänger zeigen</translation>
    </message>
    <message>
        <source>Currency</source>
        <translation>Währung</translation>
    </message>
    <message>
        <source>Currency Menu</source>
        <translation>Währungsmenü</translation>
    </message>
    <message>
        <source>The currency amounts are typed in</source>
        <translation>Die Währung, in der Beträge eingegeben werden</translation>
    </message>
    <message>
        <source>Expand</source>
        <translation>Aufklappen</translation>
    </message>
    <message>
        <source>Expand All Accounts</source>
        <translation>Alle Konten aufklappen</translation>
    </message>
    <message>
        <source>Show every account</source>
        <translation>Alle Konten zeigen</translation>
    </message>
    <message>
        <source>Collapse</source>
        <translation>Zuklappen</translation>
    </message>
    <message>
        <source>Collapse All Accounts</source>
        <translation>Alle Konten zuklappen</translation>
    </message>
    <message>
        <source>Show the top-level accounts only</source>
        <translation>Nur die obersten Konten zeigen</translation>
    </message>
</context>
</TS>
