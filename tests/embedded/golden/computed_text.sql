-- Computed text has no collation of its own; digits of equal length compare by bytes.
SELECT CONTO FROM CONTI WHERE SUBSTRING(DESCR, 1, 2) = 'ab' AND SUBSTRING(CONTO, 7, 4) <> '0000'
----
SELECT "CONTI"."CONTO" FROM main."CONTI" WHERE (substr("CONTI"."DESCR", 1, 2) COLLATE TSQL) = 'ab' AND substr("CONTI"."CONTO", 7, 4) <> '0000'
