-- A CASE over the number of levels is decided once, not for every row of the chart.
SELECT CASE 4 WHEN 2 THEN SUBSTRING(CONTO, 6, 5) WHEN 4 THEN SUBSTRING(CONTO, 1, 4) END FROM CONTI
----
SELECT substr("CONTI"."CONTO", 1, 4) FROM main."CONTI"
