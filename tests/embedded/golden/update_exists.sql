-- A value between 0 and 1 is a bit already; rows that have it are counted and left as they are, and the others get
-- the one that they do not have.
UPDATE CONTI SET ATTIVO = ISNULL((SELECT TOP 1 1 FROM #SCELTI WHERE #SCELTI.CONTO = CONTI.CONTO), 0)
----
UPDATE main."CONTI" SET "ATTIVO" = 1 - "CONTI"."ATTIVO" WHERE ts_changed("CONTI"."ATTIVO", ifnull((SELECT 1 FROM temp."#SCELTI" WHERE "#SCELTI"."CONTO" = "CONTI"."CONTO" LIMIT 1), 0))
