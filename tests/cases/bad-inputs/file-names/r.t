Vorlantic Data History File
Cycle # 10
001::   3:O.
Cycle # 20
001::   1:O.
Cycle # 30
001::   7:O.
Cycle # 40
001::   2:O.
Cycle # 50
001::   9:O.
Cycle # 60
001::   4:O.
Cycle # 70
001::   5:O.
Cycle # 80
001::   8:O.
