-- Sums keep the scale; the mean of decimals has six places at least.
SELECT ATTIVO, COUNT(*), SUM(PERC), AVG(PERC), SUM(LIVELLO), MAX(CONTO) FROM CONTI GROUP BY ATTIVO
----
SELECT "CONTI"."ATTIVO", count(*), sum("CONTI"."PERC"), ts_decimal_divide(sum("CONTI"."PERC"), nullif(count("CONTI"."PERC"), 0), 4), ts_range(sum("CONTI"."LIVELLO"), 8), max("CONTI"."CONTO") FROM main."CONTI" GROUP BY "CONTI"."ATTIVO"
