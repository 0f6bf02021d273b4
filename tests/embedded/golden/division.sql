-- Whole numbers divide to whole numbers; a divisor that may be 0 is checked.
SELECT LIVELLO / 2, LIVELLO / LIVELLO, PERC / 3 FROM CONTI
----
SELECT "CONTI"."LIVELLO" / 2, ts_range(ts_divide("CONTI"."LIVELLO", "CONTI"."LIVELLO"), 7), ts_decimal_divide("CONTI"."PERC", 3, 4) FROM main."CONTI"
