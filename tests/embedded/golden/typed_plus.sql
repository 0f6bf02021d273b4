-- Plus joins texts, adds numbers, and brings decimals to one scale.
SELECT CONTO + '-' + DESCR, LIVELLO + 1, PERC + LIVELLO FROM CONTI
----
SELECT ("CONTI"."CONTO" || '-') || "CONTI"."DESCR", "CONTI"."LIVELLO" + 1, "CONTI"."PERC" + ("CONTI"."LIVELLO" * 100) FROM main."CONTI"
