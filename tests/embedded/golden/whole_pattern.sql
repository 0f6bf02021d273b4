-- A pattern as long as its column and without wildcards is an equality.
SELECT CONTO FROM CONTI WHERE CONTO LIKE '0102030005'
----
SELECT "CONTI"."CONTO" FROM main."CONTI" WHERE "CONTI"."CONTO" = '0102030005'
