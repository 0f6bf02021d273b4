-- Parts whose length is sure need no padding.
SELECT CAST(SUBSTRING(CONTO, 1, 4) + '000000' AS NCHAR(10)) AS L, CAST(DESCR AS NCHAR(10)) AS D INTO #NUOVA FROM CONTI
----
INSERT INTO temp."#NUOVA" ("L", "D") SELECT ts_compose("CONTI"."CONTO", 1, 4, '000000'), ts_cut_pad("CONTI"."DESCR", 10) FROM main."CONTI"
