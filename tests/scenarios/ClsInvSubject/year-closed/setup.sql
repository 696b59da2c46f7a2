INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 1)
