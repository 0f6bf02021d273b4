-- Only values that may not fit are checked; rows are not sorted for a table that keeps an order of its own.
INSERT INTO CONTI (GRUPPO, CONTO, DESCR, ATTIVO, LIVELLO, PERC) SELECT 2, CONTO, DESCR + '!', ATTIVO, LIVELLO + 1, PERC FROM CONTI ORDER BY CONTO
----
INSERT INTO main."CONTI" ("GRUPPO", "CONTO", "DESCR", "ATTIVO", "LIVELLO", "PERC") SELECT 2, "CONTI"."CONTO", ts_nvarchar("CONTI"."DESCR" || '!', 40, 'DESCR'), "CONTI"."ATTIVO", ts_range("CONTI"."LIVELLO" + 1, 7), "CONTI"."PERC" FROM main."CONTI"
