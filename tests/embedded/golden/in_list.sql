-- Members take the scale of the column.
SELECT CONTO FROM CONTI WHERE PERC IN (1, 2.5) AND CONTO IN ('01', '02')
----
SELECT "CONTI"."CONTO" FROM main."CONTI" WHERE "CONTI"."PERC" IN (100, 250) AND "CONTI"."CONTO" IN ('01', '02')
