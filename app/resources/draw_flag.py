#!/usr/bin/env python3
"""Draws the national flag of Nepal and writes it to standard output as SVG.

Schedule 1 of the Constitution of Nepal (Article 8) tells how, line by line, with
ruler and compass. This does the same with numbers; each step carries its number,
each point its letter. AB is one unit; x goes right from A, y goes up.
"""

from math import cos, hypot, pi, sin, sqrt

RED, BLUE, WHITE = "#dc143c", "#003893", "#ffffff"
UNIT = 300  # SVG units for the length of AB


def meet(p, q, r, s):
    """Where the line through p and q cuts the line through r and s."""
    (x1, y1), (x2, y2), (x3, y3), (x4, y4) = p, q, r, s
    cut = (x1 - x2) * (y3 - y4) - (y1 - y2) * (x3 - x4)
    a, b = x1 * y2 - y1 * x2, x3 * y4 - y3 * x4
    return ((a * (x3 - x4) - (x1 - x2) * b) / cut, (a * (y3 - y4) - (y1 - y2) * b) / cut)


def distance(p, q):
    return hypot(p[0] - q[0], p[1] - q[1])


def to_line(point, p, q):
    """The shortest distance from a point to the line through p and q."""
    (x, y), (x1, y1), (x2, y2) = point, p, q
    return abs((x2 - x1) * (y1 - y) - (x1 - x) * (y2 - y1)) / distance(p, q)


def circles(c, r, d, s):
    """Where two circles with centres on one vertical line cut: left, then right."""
    gap = d[1] - c[1]
    y = (r * r - s * s + gap * gap) / (2 * gap)
    x = sqrt(r * r - y * y)
    return (c[0] - x, c[1] + y), (c[0] + x, c[1] + y)


def polar(centre, radius, angle):
    return (centre[0] + radius * cos(angle), centre[1] + radius * sin(angle))


# The shape inside the border.
A, B = (0.0, 0.0), (1.0, 0.0)  # 1: AB, from left to right
C = (0.0, 1.0 + 1.0 / 3.0)  # 2: AC = AB and a third, upright on AB
D = (0.0, 1.0)  # 2: AD = AB; join BD
E = (1.0 - sqrt(0.5), sqrt(0.5))  # 3: BE = AB, on BD
F = (0.0, E[1])  # 4: FG through E, parallel to AB, as long as AB
G = (1.0, E[1])
# 5: join CG

# The moon.
H = (0.25, 0.0)  # 6: AH = a quarter of AB
I = meet(H, (H[0], 1.0), C, G)  # 6: HI parallel to AC, up to CG
J = (0.0, (C[1] + F[1]) / 2)  # 7: J halves CF
K = meet(J, (1.0, J[1]), C, G)  # 7: JK parallel to AB, up to CG
L = (H[0], J[1])  # 8: where JK cuts HI
# 9: join JG
M = meet(J, G, H, I)  # 10: where JG cuts HI
N = (H[0], M[1] - to_line(M, B, D))  # 11: below M, as far as BD is from M
O = (0.0, M[1])  # 12: OM, through M, parallel to AB
LN = distance(L, N)
half = sqrt(LN * LN - (L[1] - M[1]) ** 2)  # 13: lower half circle about L, radius LN,
P, Q = (M[0] - half, M[1]), (M[0] + half, M[1])  # 13: cuts the line OM at P and Q
MQ = distance(M, Q)  # 14: lower half circle about M, radius MQ, from P to Q
NM = distance(N, M)
R, S = circles(L, LN, N, NM)  # 15: arc about N, radius NM, cuts PNQ at R and S
T = (H[0], R[1])  # 15: where RS cuts HI
TS = distance(T, S)  # 16: upper half circle about T, radius TS
TM = distance(T, M)  # 17: upper arc about T, radius TM, cuts PNQ at two points
arc_ends = circles(L, LN, T, TM)
# 18: eight equal triangles between the half circle of 16 and the arc of 17: bases
# on the inner, points on the outer, side by side over the upper half.
inner = [polar(T, TM, pi - i * pi / 8) for i in range(9)]
outer = [polar(T, TS, pi - (i + 0.5) * pi / 8) for i in range(8)]

# The sun.
U = (0.0, F[1] / 2)  # 19: U halves AF
V = meet(U, (1.0, U[1]), B, D)  # 19: UV parallel to AB, up to BE
W = (H[0], U[1])  # 20: where HI cuts UV
MN = distance(M, N)  # 20: circle about W, radius MN
# 21: circle about W, radius LN
# 22: twelve equal triangles between the two, the points of two of them on HI.
sun = [polar(W, LN if i % 2 else MN, pi / 2 + (i - 1) * pi / 12) for i in range(24)]

# 23: the border is as wide as TN, and as angular outside as inside.
TN = distance(T, N)


def offset(corners, width):
    """The outline moved outwards by a width; corners anticlockwise."""
    moved = []
    for i, (x, y) in enumerate(corners):
        (x0, y0), (x2, y2) = corners[i - 1], corners[(i + 1) % len(corners)]
        lines = []
        for (px, py), (qx, qy) in (((x0, y0), (x, y)), ((x, y), (x2, y2))):
            length = hypot(qx - px, qy - py)
            nx, ny = (qy - py) / length * width, -(qx - px) / length * width
            lines += [(px + nx, py + ny), (qx + nx, qy + ny)]
        moved.append(meet(*lines))
    return moved


inside = [A, B, E, G, C]
outside = offset(inside, TN)
left, right = min(p[0] for p in outside), max(p[0] for p in outside)
bottom, top = min(p[1] for p in outside), max(p[1] for p in outside)


def at(point):
    return f"{(point[0] - left) * UNIT:.3f} {(top - point[1]) * UNIT:.3f}"


def polygon(points):
    return "M" + "L".join(at(p) for p in points) + "Z"


def arc(radius, end, sweep, large=0):
    """To `end`, clockwise when sweep is 1."""
    return f"A{radius * UNIT:.3f} {radius * UNIT:.3f} 0 {large} {sweep} {at(end)}"


# One outline: down PNQ to the arc of 17, over the triangles, PNQ again, and back
# along the half circle of 14.
moon = (
    f"M{at(P)}{arc(LN, arc_ends[0], 0)}{arc(TM, inner[0], 1)}"
    + "".join(f"L{at(outer[i])}L{at(inner[i + 1])}" for i in range(8))
    + f"{arc(TM, arc_ends[1], 1)}{arc(LN, Q, 0)}{arc(MQ, P, 1)}Z"
)

width, height = (right - left) * UNIT, (top - bottom) * UNIT
print(
    f"""<svg xmlns="http://www.w3.org/2000/svg" width="{width:.3f}" height="{height:.3f}" viewBox="0 0 {width:.3f} {height:.3f}">
  <!-- The national flag of Nepal, drawn by draw_flag.py; AB = {UNIT}, height : width = {height / width:.5f}. -->
  <title>National flag of Nepal</title>
  <!-- 23: the border, as wide as TN = {TN * UNIT:.3f} -->
  <path fill="{BLUE}" d="{polygon(outside)}"/>
  <!-- 1 to 5: the shape A B E G C -->
  <path fill="{RED}" d="{polygon(inside)}"/>
  <!-- 6 to 18: the moon, its eight triangles between the circles about T -->
  <path fill="{WHITE}" d="{moon}"/>
  <!-- 19 to 22: the sun, its twelve triangles between the circles about W -->
  <path fill="{WHITE}" d="{polygon(sun)}"/>
</svg>"""
)
