// SPDX-License-Identifier: Apache-2.0
// Hides the rows of the transaction table that the filter does not want, adds up the others, sorts them and saves
// them. Filter and order stand in the address after the "#", so that they can be kept. No character of this file
// may need escaping in XML.
(function () {
    'use strict';

    const form = document.getElementById('filter');
    const table = document.getElementById('transactions');
    if (!form || !table) return;
    const found = document.getElementById('found');
    const names = ['q', 'from', 'until', 'account', 'flow', 'sort'];
    const fields = names.map(name => form.elements.namedItem(name)).filter(field => field !== null);

    const rows = Array.from(table.tBodies[0].rows, element => {
        const date = element.cells[0];
        const amount = element.lastElementChild;
        // A row without an amount has a text in its place.
        const value = amount.className === 'none' ? '' : amount.firstChild.data;
        return {
            element: element,
            text: null,  // made when it is first searched
            date: date.className === 'none' ? '' : date.textContent,
            account: element.dataset.account,
            flow: amount.className,
            value: value,
            // What buys or sells securities is neither in nor out.
            amount: ['in', 'out'].includes(amount.className) ? value : '',
            currency: amount.children.length ? amount.lastElementChild.textContent : table.dataset.currency
        };
    });

    // Amounts are decimal and may have many digits: they are added as whole numbers of their smallest unit.
    const decimalsOf = text => (text.trim().split('.')[1] || '').length;
    const places = rows.reduce((most, row) => Math.max(most, decimalsOf(row.value)), 2);

    function units(text) {
        const plain = text.trim().replace('\u2212', '-').replace(/[+,]/g, '');
        return BigInt(plain.replace('.', '') + '0'.repeat(places - decimalsOf(text)));
    }

    // All amounts in a currency have at least its decimals: a sum has as many as the amount that has the fewest.
    const fewestPlaces = new Map();
    for (const row of rows) {
        if (row.value === '') continue;
        const fewest = Math.min(fewestPlaces.get(row.currency) ?? places, decimalsOf(row.value));
        fewestPlaces.set(row.currency, fewest);
    }

    function amountText(sum, fewest) {
        const digits = String(sum).replace('-', '').padStart(places + 1, '0');
        const whole = digits.slice(0, -places).replace(/\B(?=(\d{3})+$)/g, ',');
        const fraction = digits.slice(-places).replace(/0+$/, '').padEnd(fewest, '0');
        return (0n > sum ? '\u2212' : '') + whole + (fraction === '' ? '' : '.' + fraction);
    }

    // Small letters that are more than a plain letter with marks, and what the program's own search takes them for.
    const plainLetters = {
        'ß': 'ss', 'æ': 'ae', 'œ': 'oe', 'ĳ': 'ij', 'ø': 'o', 'đ': 'd', 'ħ': 'h', 'ı': 'i', 'ŀ': 'l', 'ł': 'l', 'ŧ': 't',
        'ς': 'σ'
    };
    const otherLetters = new RegExp('[' + Object.keys(plainLetters).join('') + ']', 'g');

    // Texts are compared without case, marks and accents, amounts as they are typed: with a hyphen and no groups.
    function folded(text) {
        return text.toLowerCase().normalize('NFD').replace(/[\u0300-\u036f]/g, '')
            .replace(otherLetters, letter => plainLetters[letter])
            .replace(/\u2212/g, '-').replace(/(\d),(?=\d)/g, '$1');
    }

    function textOf(row) {
        if (row.text === null) row.text = folded(row.element.textContent);
        return row.text;
    }

    function wanted() {
        const values = Object.fromEntries(fields.map(field => [field.name, field.value]));
        const words = folded(values.q).split(/\s+/);
        return row => {
            if (values.from) if (!row.date || values.from > row.date) return false;
            if (values.until) if (!row.date || row.date > values.until) return false;
            if (values.account) if (row.account !== values.account) return false;
            if (values.flow) if (row.flow !== values.flow) return false;
            return words.every(word => word === '' || textOf(row).includes(word));
        };
    }

    // "+10.00 in, −2.50 out EUR" for each currency that is shown.
    function sumsOf(shown) {
        const sums = new Map();
        for (const row of shown) {
            if (!row.amount) continue;
            if (!sums.has(row.currency)) sums.set(row.currency, { in: 0n, out: 0n });
            sums.get(row.currency)[row.flow] += units(row.amount);
        }
        return Array.from(sums, ([currency, sum]) => {
            const text = flow => amountText(sum[flow], fewestPlaces.get(currency));
            return 'in ' + text('in') + ', out ' + text('out') + (currency ? ' ' + currency : '');
        });
    }

    // Order

    const heads = Array.from(table.tHead.rows[0].cells);
    const sort = form.elements.namedItem('sort');
    const collator = new Intl.Collator(undefined, { numeric: true, sensitivity: 'base' });
    let order = rows;
    let orderName = '';

    // What a row is sorted by in a column; null for nothing.
    function keyOf(row, column) {
        const kind = heads[column].dataset.sort;
        if (kind === 'date') return row.date || null;
        if (kind === 'amount') return row.value === '' ? null : units(row.value);
        return row.element.cells[column].textContent.trim() || null;
    }

    function compare(a, b) {
        if (typeof a === 'string') return collator.compare(a, b);
        return a > b ? 1 : b > a ? -1 : 0;
    }

    // Equal rows stay in the order of the page; those without a key come last in either direction.
    function sorted(column, direction) {
        const keyed = rows.map(row => ({ row: row, key: keyOf(row, column) }));
        const known = keyed.filter(each => each.key !== null);
        known.sort((a, b) => direction * compare(a.key, b.key));
        return known.concat(keyed.filter(each => each.key === null)).map(each => each.row);
    }

    function arrange() {
        if (sort.value === orderName) return;
        orderName = sort.value;
        const column = heads.findIndex(head => head.dataset.sort === orderName.replace('-', ''));
        const direction = orderName.startsWith('-') ? -1 : 1;
        order = column === -1 ? rows : sorted(column, direction);
        for (const head of heads) head.removeAttribute('aria-sort');
        if (column !== -1) heads[column].setAttribute('aria-sort', direction === 1 ? 'ascending' : 'descending');
        const all = document.createDocumentFragment();
        for (const row of order) all.append(row.element);
        table.tBodies[0].append(all);
    }

    function offerOrders() {
        for (const head of heads) {
            const title = head.textContent.trim();
            for (const [sign, arrow] of [['', ' \u2191'], ['-', ' \u2193']])
                sort.append(new Option(title + arrow, sign + head.dataset.sort));
            const button = document.createElement('button');
            button.type = 'button';
            button.append(...head.childNodes);
            button.addEventListener('click', () => {
                sort.value = (sort.value === head.dataset.sort ? '-' : '') + head.dataset.sort;
                apply();
                writeAddress();
            });
            head.append(button);
        }
    }

    function apply() {
        arrange();
        const isWanted = wanted();
        const shown = [];
        for (const row of order) {
            const isShown = isWanted(row);
            if (row.element.hidden === isShown) row.element.hidden = !isShown;
            if (isShown) shown.push(row);
        }
        found.textContent = [shown.length + ' of ' + rows.length + ' shown'].concat(sumsOf(shown)).join('; ');
    }

    // The rows that are shown, with the columns of the program's own tables.
    function save(button) {
        const lines = order.filter(row => !row.element.hidden)
            .map(row => row.element.dataset[button.dataset.table])
            .filter(line => line !== undefined);
        const text = [button.dataset.columns].concat(lines).map(line => line + '\r\n').join('');
        const link = document.createElement('a');
        link.href = URL.createObjectURL(new Blob([text], { type: 'text/csv' }));
        link.download = button.dataset.table === 'bank' ? 'transactions.csv' : 'trades.csv';
        link.click();
        setTimeout(() => URL.revokeObjectURL(link.href), 10000);
    }

    function readAddress() {
        const values = new URLSearchParams(location.hash.slice(1));
        // An address of a section is no filter.
        if (location.hash.length > 1) if (!names.some(name => values.has(name))) return;
        for (const field of fields) field.value = values.get(field.name) || '';
    }

    function writeAddress() {
        const values = new URLSearchParams();
        for (const field of fields) if (field.value) values.set(field.name, field.value);
        location.replace('#' + values);
    }

    form.addEventListener('submit', event => event.preventDefault());
    form.addEventListener('input', apply);
    form.addEventListener('change', writeAddress);
    form.addEventListener('reset', () => setTimeout(() => { apply(); writeAddress(); }));
    for (const button of form.querySelectorAll('[data-table]')) button.addEventListener('click', () => save(button));
    window.addEventListener('hashchange', () => { readAddress(); apply(); });

    offerOrders();
    readAddress();
    apply();
    form.hidden = false;
})();
