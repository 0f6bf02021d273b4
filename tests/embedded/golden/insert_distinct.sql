-- What must be distinct is made so before it is converted.
INSERT INTO #SCELTI (CONTO, ATTIVO) SELECT DISTINCT DESCR, 0 FROM CONTI
----
INSERT INTO temp."#SCELTI" ("CONTO", "ATTIVO") SELECT ts_nchar("c0", 10, 'CONTO'), "c1" FROM (SELECT DISTINCT "CONTI"."DESCR" AS "c0", 0 AS "c1" FROM main."CONTI")
