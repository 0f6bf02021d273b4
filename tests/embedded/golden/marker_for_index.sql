-- Markers are numbered; a text marker compares by the column's collation.
-- ?: DECIMAL(2 0); NCHAR(10)
SELECT DESCR FROM CONTI WHERE GRUPPO = ? AND CONTO = ?
----
SELECT "CONTI"."DESCR" FROM main."CONTI" WHERE "CONTI"."GRUPPO" = ?1 AND "CONTI"."CONTO" = ?2
