-- Called with constants, the function is a query of its own.
SELECT D FROM DESCRIZIONI('01', NULL)
----
SELECT "DESCRIZIONI"."D" FROM (SELECT "CONTI$1"."CONTO" AS "C", "CONTI$1"."DESCR" AS "D" FROM main."CONTI" AS "CONTI$1" WHERE "CONTI$1"."CONTO" = '01        ' AND NULL) AS "DESCRIZIONI"
