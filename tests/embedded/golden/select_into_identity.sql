-- Rows are numbered by SQLite in the order in which they arrive; nothing is computed for it.
SELECT IDENTITY(INT, 1, 1) AS INDICE, CONTO, CAST(0 AS BIT) AS ATTIVO INTO #NUOVA FROM CONTI WHERE GRUPPO = 1 ORDER BY CONTO ASC
----
INSERT INTO temp."#NUOVA" ("CONTO", "ATTIVO") SELECT "CONTI"."CONTO", 0 FROM main."CONTI" WHERE "CONTI"."GRUPPO" = 1 ORDER BY "CONTI"."CONTO"
