-- The column stays bare and the constant takes its scale, so that the key serves.
SELECT CONTO FROM CONTI WHERE GRUPPO = 1 AND PERC > 12.5
----
SELECT "CONTI"."CONTO" FROM main."CONTI" WHERE "CONTI"."GRUPPO" = 1 AND "CONTI"."PERC" > 1250
