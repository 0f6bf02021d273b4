-- A text beside a number is a number; a constant is read at once.
SELECT CONTO FROM CONTI WHERE GRUPPO = '2' AND DESCR = 5
----
SELECT "CONTI"."CONTO" FROM main."CONTI" WHERE "CONTI"."GRUPPO" = 2 AND ts_text_to_int("CONTI"."DESCR", 8) = 5
