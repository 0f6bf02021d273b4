-- A pattern of digits and one % is a range, which an index can serve and no function has to look at.
SELECT CONTO FROM CONTI WHERE CONTO LIKE '0102%'
----
SELECT "CONTI"."CONTO" FROM main."CONTI" WHERE "CONTI"."CONTO" >= '0102' || char(1) AND "CONTI"."CONTO" <= '0102' || char(1114111)
