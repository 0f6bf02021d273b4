-- An alias is ordered by what it stands for; a constant orders nothing.
SELECT CONTO AS C, 1 AS U FROM CONTI ORDER BY U, C DESC
----
SELECT "CONTI"."CONTO", 1 FROM main."CONTI" ORDER BY "CONTI"."CONTO" DESC
