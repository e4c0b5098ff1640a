"""Least squares with numeric slopes and limits: finds angles that reach what a pose asks."""

STEP = 1e-3
SMALLEST_GAIN = 1e-7


def _solved(a, b):
    """x of a x = b for a symmetric positive matrix given as rows; a and b are used up."""
    n = len(b)
    for i in range(n):
        row = a[i]
        pivot = row[i] or 1e-12
        for j in range(i + 1, n):
            factor = a[j][i] / pivot
            if factor:
                other = a[j]
                for k in range(i, n):
                    other[k] -= factor * row[k]
                b[j] -= factor * b[i]
    x = [0.0] * n
    for i in range(n - 1, -1, -1):
        total = b[i]
        row = a[i]
        for k in range(i + 1, n):
            total -= row[k] * x[k]
        x[i] = total / (row[i] or 1e-12)
    return x


def _slopes(f, x, r):
    columns = []
    for i in range(len(x)):
        keep = x[i]
        x[i] = keep + STEP
        columns.append([(b - a) / STEP for a, b in zip(r, f(x))])
        x[i] = keep
    return columns


def minimise(f, x, limits, rounds):
    """The x near the given one, within limits, of the smallest sum of squares of f(x)."""
    def inside(values):
        return [min(max(v, low), high) for v, (low, high) in zip(values, limits)]

    x = inside(x)
    r = f(x)
    cost = sum(v * v for v in r)
    damping = 1e-2
    for _ in range(rounds):
        columns = _slopes(f, x, r)
        gradient = [sum(c * v for c, v in zip(column, r)) for column in columns]
        # What stands at a limit and would go on stays out of the step.
        free = [i for i, (low, high) in enumerate(limits)
                if not (x[i] <= low and gradient[i] > 0 or x[i] >= high and gradient[i] < 0)]
        if not free:
            break
        normal = [[sum(a * b for a, b in zip(columns[i], columns[j])) for j in free] for i in free]
        better = False
        for _ in range(8):
            rows = [list(row) for row in normal]
            for k, row in enumerate(rows):
                row[k] += damping * (normal[k][k] + 1e-6)
            step = _solved(rows, [-gradient[i] for i in free])
            tried = list(x)
            for i, s in zip(free, step):
                tried[i] += s
            tried = inside(tried)
            tried_r = f(tried)
            tried_cost = sum(v * v for v in tried_r)
            if tried_cost < cost:
                better = True
                break
            damping *= 5
        if not better:
            break
        gain = cost - tried_cost
        x, r, cost = tried, tried_r, tried_cost
        damping = max(damping / 4, 1e-6)
        if gain < SMALLEST_GAIN * (1 + cost):
            break
    f(x)  # leaves the figure at the result
    return x, cost
