-- Computed text is grouped by the collation.
SELECT LEFT(DESCR, 3), COUNT(*) FROM CONTI GROUP BY LEFT(DESCR, 3)
----
SELECT substr("CONTI"."DESCR", 1, 3), count(*) FROM main."CONTI" GROUP BY substr("CONTI"."DESCR", 1, 3) COLLATE TSQL
