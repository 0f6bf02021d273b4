-- Constants are converted once.
INSERT INTO CONTI VALUES (1, '01', N'Attività', NULL, 1, 1, 12.345)
----
INSERT INTO main."CONTI" ("GRUPPO", "CONTO", "DESCR", "PADRE", "ATTIVO", "LIVELLO", "PERC") VALUES (1, '01        ', 'Attività', NULL, 1, 1, 1235)
