-- A subquery that could give two rows is watched: SQLite would take the first.
SELECT (SELECT CONTO FROM CONTI AS C WHERE C.DESCR = CONTI.DESCR) FROM CONTI
----
SELECT (SELECT ts_single("C"."CONTO") FROM main."CONTI" AS "C" WHERE "C"."DESCR" = "CONTI"."DESCR") FROM main."CONTI"
