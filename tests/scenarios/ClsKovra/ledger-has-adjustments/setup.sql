INSERT INTO JustInVouch (cJVCode, dJVDate) VALUES ('J1', '2023-01-01')
