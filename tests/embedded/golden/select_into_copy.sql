-- A table as it stands is copied without a look into its rows; its numbers keep them in order.
SELECT INDICE, CONTO, ATTIVO INTO #COPIA FROM #SCELTI ORDER BY INDICE ASC
----
INSERT INTO temp."#COPIA" SELECT * FROM temp."#SCELTI"
