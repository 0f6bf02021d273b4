-- Parts of one column and constants become one text at once; parts of several columns are joined as they come.
SELECT SUBSTRING(CONTO, 1, 2) + '/' + SUBSTRING(CONTO, 3, 2) + ('-' + LEFT(CONTO, 1)), '<' + SUBSTRING(DESCR, 1, 3) + SUBSTRING(CONTO, 1, 2), SUBSTRING(CONTO, 1, 2), SUBSTRING(CONTO, LIVELLO, 2) + '0', NULLIF(SUBSTRING(CONTO, 1, 2), '00') + '/' FROM CONTI
----
SELECT ts_compose("CONTI"."CONTO", 1, 2, '/', 3, 2, '-', 1, 1), ts_compose("CONTI"."DESCR", '<', 1, 3) || substr("CONTI"."CONTO", 1, 2), substr("CONTI"."CONTO", 1, 2), ts_substring("CONTI"."CONTO", "CONTI"."LIVELLO", 2) || '0', CASE WHEN substr("CONTI"."CONTO", 1, 2) = '00' THEN NULL ELSE substr("CONTI"."CONTO", 1, 2) END || '/' FROM main."CONTI"
