-- What the types prove to fit is plain SQL, the rest is checked.
SELECT ATTIVO * POWER(2, 9) + ATTIVO * POWER(2, 8), LIVELLO * 1000, LIVELLO * 100000 FROM CONTI
----
SELECT ("CONTI"."ATTIVO" * 512) + ("CONTI"."ATTIVO" * 256), "CONTI"."LIVELLO" * 1000, ts_range("CONTI"."LIVELLO" * 100000, 8) FROM main."CONTI"
