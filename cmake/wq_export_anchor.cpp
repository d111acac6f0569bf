// Gives the export header generator a target; nothing is built from it.
