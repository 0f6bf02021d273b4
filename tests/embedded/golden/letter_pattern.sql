-- Letters may carry marks that the range does not tell apart: the pattern itself is asked as well.
SELECT CONTO FROM CONTI WHERE DESCR LIKE 'ca%a'
----
SELECT "CONTI"."CONTO" FROM main."CONTI" WHERE "CONTI"."DESCR" >= 'ca' || char(1) AND "CONTI"."DESCR" <= 'ca' || char(1114111) AND ts_like('ca%a', "CONTI"."DESCR")
