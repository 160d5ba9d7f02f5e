// SPDX-License-Identifier: Apache-2.0
// Hides the rows of the transaction table that the filter does not want, and adds up the others. The
// filter stands in the address after the "#", so that it can be kept. No character of this file may need
// escaping in XML.
(function () {
    'use strict';

    const form = document.getElementById('filter');
    const table = document.getElementById('transactions');
    if (!form || !table) return;
    const found = document.getElementById('found');
    const names = ['q', 'from', 'until', 'account', 'flow'];
    const fields = names.map(name => form.elements.namedItem(name)).filter(field => field !== null);

    const rows = Array.from(table.tBodies[0].rows, element => {
        const date = element.cells[0];
        const amount = element.lastElementChild;
        return {
            element: element,
            text: null,  // made when it is first searched
            date: date.className === 'none' ? '' : date.textContent,
            account: element.dataset.account,
            flow: amount.className,
            // What buys or sells securities is neither in nor out.
            amount: ['in', 'out'].includes(amount.className) ? amount.firstChild.data : '',
            currency: amount.children.length ? amount.lastElementChild.textContent : table.dataset.currency
        };
    });

    // Amounts are decimal and may have many digits: they are added as whole numbers of their smallest unit.
    const decimalsOf = text => (text.trim().split('.')[1] || '').length;
    const places = rows.reduce((most, row) => Math.max(most, decimalsOf(row.amount)), 2);

    function units(text) {
        const plain = text.trim().replace('\u2212', '-').replace(/[+,]/g, '');
        return BigInt(plain.replace('.', '') + '0'.repeat(places - decimalsOf(text)));
    }

    function amountText(sum) {
        const digits = String(sum).replace('-', '').padStart(places + 1, '0');
        const whole = digits.slice(0, -places).replace(/\B(?=(\d{3})+$)/g, ',');
        const fraction = digits.slice(-places).replace(/0+$/, '').padEnd(2, '0');
        return (0n > sum ? '\u2212' : '') + whole + '.' + fraction;
    }

    function textOf(row) {
        if (row.text === null) row.text = row.element.textContent.toLowerCase();
        return row.text;
    }

    function wanted() {
        const values = Object.fromEntries(fields.map(field => [field.name, field.value]));
        const words = values.q.toLowerCase().split(/\s+/);
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
        return Array.from(sums, ([currency, sum]) =>
            'in ' + amountText(sum.in) + ', out ' + amountText(sum.out) + (currency ? ' ' + currency : ''));
    }

    function apply() {
        const isWanted = wanted();
        const shown = [];
        for (const row of rows) {
            const isShown = isWanted(row);
            if (row.element.hidden === isShown) row.element.hidden = !isShown;
            if (isShown) shown.push(row);
        }
        found.textContent = [shown.length + ' of ' + rows.length + ' shown'].concat(sumsOf(shown)).join('; ');
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
    window.addEventListener('hashchange', () => { readAddress(); apply(); });

    readAddress();
    apply();
    form.hidden = false;
})();
