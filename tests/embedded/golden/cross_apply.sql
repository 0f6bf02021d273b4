-- A function that only selects is merged into the query; a test that its argument decides falls away.
SELECT C, D FROM #SCELTI CROSS APPLY DESCRIZIONI(#SCELTI.CONTO, 1) WHERE ATTIVO = 1
----
SELECT "CONTI$1"."CONTO", "CONTI$1"."DESCR" FROM temp."#SCELTI" JOIN main."CONTI" AS "CONTI$1" WHERE "CONTI$1"."CONTO" = "#SCELTI"."CONTO" AND "CONTI$1"."GRUPPO" = 1 AND "#SCELTI"."ATTIVO" = 1
